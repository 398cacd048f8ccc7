// SPDX-License-Identifier: MIT
// What differs from agent to agent without being a rule: names, marks, colours, texts. One row for each
// agent; whatever depends on the agent is looked up here, so that nothing has to ask which of them it has
// before it. Plain values, any thread.
#pragma once

#include "VesloraCore/Agents/AgentKind.h"
#include "VesloraCore/Agents/AgentMarks.h"
#include "VesloraCore/Agents/Hooks/AgentHookNames.h"
#include "VesloraCore/Text/Words.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace veslora {

struct AgentColor {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    bool operator==(const AgentColor&) const = default;
};

inline constexpr AgentColor claudeOrange{215, 119, 87};

/// The mark of an agent beside the notch.
enum class AgentPicture : std::uint8_t {
    letters, ///< its glyph, written
    mascot,  ///< ClaudeMascot, drawn
};

/// What the settings say of an agent's hooks. Texts to be translated, so each ends with a null.
struct AgentHookTexts {
    const char* title = "";
    const char* detail = "";        ///< what is put where
    const char* footer = "";        ///< what the user has to know besides
    const char* notUnderstood = ""; ///< the configuration could not be read, and was left as it is
};

struct AgentTraits {
    AgentKind kind = AgentKind::claude;
    std::string_view rawValue; ///< stands for the agent in stored values
    std::string_view name;     ///< for people, in a word
    std::string_view fullName; ///< for people, as its makers call it
    /// The agent that is meant where none is named: its name and its mark are shown only beside another's.
    bool isImplied = false;
    std::string_view glyph;     ///< the few letters before a session of the agent
    bool isGlyphSymbol = false; ///< of the font of symbols, not of the one of letters
    AgentPicture picture = AgentPicture::letters;
    std::optional<AgentColor> color; ///< of glyph, picture and spinner; absent for the colour of text
    AgentSpinner spinner;
    AgentHookNames hookNames;
    AgentHookTexts hookTexts;
};

/// In the order in which agents are listed. Of two things that are alike that of the earlier row comes first.
inline constexpr std::array agentTraits{
    AgentTraits{
        .kind = AgentKind::claude,
        .rawValue = "claude",
        .name = "Claude",
        .fullName = claudeHookNames.agent,
        .isImplied = true,
        .glyph = "✻",
        .isGlyphSymbol = true,
        .picture = AgentPicture::mascot,
        .color = claudeOrange,
        .spinner = {ClaudeSpinner::frame, ClaudeSpinner::period, 14, 0},
        .hookNames = claudeHookNames,
        .hookTexts = {.title = translatable("AgentHooks", "Claude Code: hooks and status line"),
                      .detail = translatable(
                          "AgentHooks",
                          "Adds a status line (for the usage widget; a status line you already have "
                          "keeps showing) and six hooks to ~/.claude/settings.json (backed up first) "
                          "so Veslora knows when a session needs your approval or finishes. Remove "
                          "takes out only Veslora's."),
                      .footer =
                          translatable("AgentHooks",
                                       "Without hooks, sessions and their working time still show; approvals "
                                       "don't."),
                      .notUnderstood = translatable(
                          "AgentHooks", "Couldn't read ~/.claude/settings.json; nothing was changed.")},
    },
    AgentTraits{
        .kind = AgentKind::codex,
        .rawValue = "codex",
        .name = "Codex",
        .fullName = codexHookNames.agent,
        .glyph = ">_",
        .spinner = {CodexSpinner::frame, CodexSpinner::period, 20, 1.5},
        .hookNames = codexHookNames,
        .hookTexts =
            {.title = translatable("AgentHooks", "Codex: hooks"),
             .detail = translatable(
                 "AgentHooks", "Adds eight hooks to ~/.codex/hooks.json (backed up first) so Veslora sees "
                               "Codex CLI sessions and can answer their approvals. Remove takes out only "
                               "Veslora's. Usage needs no install."),
             .footer = translatable("AgentHooks",
                                    "Then run /hooks in Codex once and trust them: Codex runs new hooks only "
                                    "after you've reviewed them."),
             .notUnderstood =
                 translatable("AgentHooks", "Couldn't read ~/.codex/hooks.json (it must be a JSON object); "
                                            "nothing was changed.")},
    },
};

/// The row of an agent; the first one for an agent without a row.
[[nodiscard]] constexpr const AgentTraits& traitsOf(AgentKind kind,
                                                    std::span<const AgentTraits> table = agentTraits) {
    for (const AgentTraits& traits : table) {
        if (traits.kind == kind) {
            return traits;
        }
    }
    return table.front();
}

/// The agent of a stored value; nothing for any other text.
[[nodiscard]] constexpr std::optional<AgentKind>
agentKindOf(std::string_view rawValue, std::span<const AgentTraits> table = agentTraits) {
    for (const AgentTraits& traits : table) {
        if (traits.rawValue == rawValue) {
            return traits.kind;
        }
    }
    return std::nullopt;
}

} // namespace veslora
