// SPDX-License-Identifier: MIT
// The lines of a Codex session's log, and a day's count of them: it must come out as counting again would.
// Seeds: agents/codex/rollouts/*.jsonl
#include "VesloraCore/Agents/Usage/CodexUsageTally.h"
#include "fuzz/Fuzzing.h"

#include <cmath>
#include <map>
#include <memory>

using namespace veslora;
using fuzz::require;

namespace {

/// One day that never ends.
class OneDay final : public Calendar {
  public:
    [[nodiscard]] DaySpan dayOf(Timestamp) const override { return {-1e300, 1e300}; }
};

void checkLimit(const std::optional<ClaudeLimit>& limit) {
    if (limit) {
        require(limit->percent >= 0 && limit->percent <= 100);
        require(!limit->resetsAt || std::isfinite(*limit->resetsAt));
    }
}

void checkLine(const CodexUsageLine& line) {
    if (const auto* limits = std::get_if<CodexLimits>(&line.kind)) {
        checkLimit(limits->fiveHour);
        checkLimit(limits->week);
    } else if (const auto* context = std::get_if<CodexContext>(&line.kind)) {
        require(context->percent >= 0 && context->percent <= 100 && context->window >= 1);
    } else {
        require(std::get<CodexUsageLine::Tokens>(line.kind).totals.input >= 0);
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view text = fuzz::textOf(data, size);
    CodexUsageTally tally(0, std::make_shared<OneDay>());
    std::map<std::string, ClaudeTokenTotals> last;
    while (!text.empty()) {
        const auto records = CodexUsageLine::parse(fuzz::takeLine(text));
        require(records.size() <= 2);
        for (const CodexUsageLine& record : records) {
            checkLine(record);
            tally.add(record);
            if (const auto* tokens = std::get_if<CodexUsageLine::Tokens>(&record.kind)) {
                last[tokens->key] = tokens->totals;
            }
        }
    }
    TokenSum recount;
    for (const auto& [key, totals] : last) {
        recount.add(totals);
    }
    require(tally.totals() == recount.totals());
    return 0;
}
