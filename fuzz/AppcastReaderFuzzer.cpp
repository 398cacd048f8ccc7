// SPDX-License-Identifier: MIT
// A feed of releases: whatever it says, what is read of it is bounded, of a form that may be used, and
// nothing at all behind a document type.
#include "UpdateFetcher/AppcastReader.h"
#include "VesloraCore/Text/Utf8.h"
#include "VesloraCore/Updates/UpdateMessages.h"
#include "fuzz/Fuzzing.h"

using namespace veslora;
using fuzz::require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::textOf(data, size);
    const auto items = AppcastReader::read(QByteArray(text.data(), static_cast<qsizetype>(text.size())));
    if (!items) {
        return 0;
    }
    for (const AppcastItem& item : *items) {
        require(UpdateMessages::isSound(item));
        require(Utf8::isValid(item.notes));
        require(item.notes.size() <= 3 * (AppcastReader::longestNotes + 1));
        // What the helper says of it is what the program hears.
        require(UpdateMessages::parseAnswer(UpdateMessages::print(UpdateAnswer(item))) == UpdateAnswer(item));
        const std::string name = Appcast::fileName(item.version, item.architecture);
        require(name.find('/') == std::string::npos && name.starts_with("veslora_"));
    }
    return 0;
}
