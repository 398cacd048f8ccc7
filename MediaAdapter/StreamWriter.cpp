// SPDX-License-Identifier: MIT
#include "MediaAdapter/StreamWriter.h"

#include <utility>

namespace veslora {
namespace {

std::string line(bool isDifference, Json payload) {
    Json object = Json::makeObject();
    object.set("type", Json::makeString("data"));
    object.set("diff", Json::makeBoolean(isDifference));
    object.set("payload", std::move(payload));
    return object.print(Json::Layout::compact) + "\n";
}

Json difference(const Json& before, const Json& after) {
    Json changes = Json::makeObject();
    for (const Json::Member& member : before.members()) {
        if (after.find(member.key) == nullptr) {
            changes.set(member.key, Json());
        }
    }
    for (const Json::Member& member : after.members()) {
        const Json* const told = before.find(member.key);
        if (told == nullptr || *told != member.value) {
            changes.set(member.key, member.value);
        }
    }
    return changes;
}

} // namespace

std::optional<std::string> StreamWriter::lineTo(const Json& payload) {
    if (m_told == payload) {
        return std::nullopt;
    }
    const bool isWhole = !m_told || payload.members().empty();
    std::string text = isWhole ? line(false, payload) : line(true, difference(*m_told, payload));
    m_told = payload;
    return text;
}

} // namespace veslora
