// SPDX-License-Identifier: MIT
#include "VesloraCore/Music/LineBuffer.h"

#include "VesloraCore/Text/Utf8.h"

#include <utility>

namespace veslora {

std::vector<std::string> LineBuffer::append(std::string_view bytes) {
    std::vector<std::string> lines;
    for (std::size_t end = bytes.find('\n'); end != std::string_view::npos; end = bytes.find('\n')) {
        hold(bytes.substr(0, end));
        bytes.remove_prefix(end + 1);
        std::string line = std::exchange(m_held, {});
        if (!std::exchange(m_isTooLong, false)) {
            lines.push_back(Utf8::isValid(line) ? std::move(line) : Utf8::repaired(line));
        }
    }
    hold(bytes);
    return lines;
}

void LineBuffer::hold(std::string_view piece) {
    if (m_isTooLong || piece.size() > m_limit - m_held.size()) {
        m_isTooLong = true;
        m_held = {};
        return;
    }
    m_held.append(piece);
}

} // namespace veslora
