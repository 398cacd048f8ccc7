// SPDX-License-Identifier: MIT
#include "UpdateFetcher/Ed25519.h"

#include "VesloraCore/Text/Base64.h"

#include <sodium.h>

namespace veslora::Ed25519 {

namespace {

const unsigned char* bytesOf(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data()); // NOLINT(*-reinterpret-cast)
}

} // namespace

bool isSigned(std::string_view bytes, std::string_view signature, std::string_view key) {
    const auto signatureBytes = Base64::decode(signature);
    const auto keyBytes = Base64::decode(key);
    if (!signatureBytes || signatureBytes->size() != crypto_sign_BYTES || !keyBytes ||
        keyBytes->size() != crypto_sign_PUBLICKEYBYTES || sodium_init() < 0) {
        return false;
    }
    return crypto_sign_verify_detached(bytesOf(*signatureBytes), bytesOf(bytes), bytes.size(),
                                       bytesOf(*keyBytes)) == 0;
}

} // namespace veslora::Ed25519
