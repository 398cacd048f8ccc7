// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Usage/ClaudeUsageTally.h"

#include "VesloraCore/Text/ByteSearch.h"
#include "VesloraCore/Text/Iso8601.h"
#include "VesloraCore/Text/JsonScanner.h"

#include <utility>

namespace veslora {

namespace {

struct Message {
    std::optional<std::string> id;
    std::optional<ClaudeTokenTotals> usage;
    bool isUsagePlain = false; ///< its key is written there without escapes, and so the marker does
};

// Of several equal keys the last counts, and so each function begins again.
std::optional<ClaudeTokenTotals> readUsage(JsonScanner& scanner) {
    ClaudeTokenTotals totals;
    const bool isObject = scanner.object([&](JsonScanner::Key key) {
        if (key == "input_tokens") {
            totals.input = scanner.count();
        } else if (key == "output_tokens") {
            totals.output = scanner.count();
        } else if (key == "cache_creation_input_tokens") {
            totals.cacheWrite = scanner.count();
        } else if (key == "cache_read_input_tokens") {
            totals.cacheRead = scanner.count();
        } else {
            scanner.skip();
        }
    });
    return isObject ? std::optional(totals) : std::nullopt;
}

std::optional<Message> readMessage(JsonScanner& scanner) {
    Message message;
    const bool isObject = scanner.object([&](JsonScanner::Key key) {
        if (key == "id") {
            message.id = scanner.string();
        } else if (key == "usage") {
            message.isUsagePlain = key.isPlain();
            message.usage = readUsage(scanner);
        } else {
            scanner.skip();
        }
    });
    return isObject ? std::optional(std::move(message)) : std::nullopt;
}

struct Line {
    std::optional<std::string> type;
    std::optional<std::string> timestamp;
    std::optional<std::string> requestId;
    std::optional<std::string> uuid;
    std::optional<Message> message;
};

std::optional<Line> readLine(std::string_view text) {
    JsonScanner scanner(text);
    Line line;
    const bool isObject = scanner.object([&](JsonScanner::Key key) {
        if (key == "type") {
            line.type = scanner.string();
        } else if (key == "timestamp") {
            line.timestamp = scanner.string();
        } else if (key == "requestId") {
            line.requestId = scanner.string();
        } else if (key == "uuid") {
            line.uuid = scanner.string();
        } else if (key == "message") {
            line.message = readMessage(scanner);
        } else {
            scanner.skip();
        }
    });
    return isObject && scanner.isComplete() ? std::optional(std::move(line)) : std::nullopt;
}

std::optional<std::string> keyOf(const Line& line) {
    if (line.message->id) {
        return *line.message->id + "|" + line.requestId.value_or("");
    }
    return line.uuid;
}

} // namespace

std::optional<ClaudeUsageLine> ClaudeUsageLine::parse(std::string_view text) {
    const std::optional<Line> line = readLine(text);
    // The marker is asked for last, since the reader of transcripts has looked for it before.
    if (!line || line->type != "assistant" || !line->timestamp || !line->message || !line->message->usage) {
        return std::nullopt;
    }
    const std::optional<Timestamp> time = Iso8601::parse(*line->timestamp);
    std::optional<std::string> key = keyOf(*line);
    if (!time || !key ||
        (!line->message->isUsagePlain && ByteSearch::find(text, marker) == std::string_view::npos)) {
        return std::nullopt;
    }
    return ClaudeUsageLine{std::move(*key), *line->message->usage, *time};
}

ClaudeUsageTally::ClaudeUsageTally(Timestamp time, std::shared_ptr<const Calendar> calendar,
                                   const SipHash::Key& secret)
    : ClaudeUsageTally(calendar->dayOf(time), calendar, MessageCounts(secret)) {}

ClaudeUsageTally::ClaudeUsageTally(const DaySpan& day, std::shared_ptr<const Calendar> calendar,
                                   MessageCounts counts)
    : m_calendar(std::move(calendar)), m_day(day), m_counts(std::move(counts)) {}

void ClaudeUsageTally::add(std::string_view line) {
    if (const std::optional<ClaudeUsageLine> read = ClaudeUsageLine::parse(line)) {
        add(*read);
    }
}

void ClaudeUsageTally::add(const ClaudeUsageLine& line) {
    if (m_day.contains(line.time)) {
        m_counts.count(line.key, line.totals);
    }
}

bool ClaudeUsageTally::merge(ClaudeUsageTally&& later) {
    return later.m_day == m_day && m_counts.merge(std::move(later.m_counts));
}

void ClaudeUsageTally::roll(Timestamp time) {
    const DaySpan day = m_calendar->dayOf(time);
    if (day == m_day) {
        return;
    }
    const bool isSameDay = day.contains(m_day.start);
    m_day = day;
    if (!isSameDay) {
        m_counts = m_counts.emptied();
    }
}

ClaudeUsageTally ClaudeUsageTally::emptied() const {
    return {m_day, m_calendar, m_counts.emptied()};
}

} // namespace veslora
