// SPDX-License-Identifier: MIT
// What the program can say about itself, one category a folder. All are silent unless a user switches them
// on, by "--verbose" or by Qt's own QT_LOGGING_RULES, as in "veslora.spool=true". A warning says what failed,
// with the system's reason and the path; an information says what was decided. No line ever holds the text of
// a request, a transcript or a setting. Any thread.
#pragma once

#include <QLoggingCategory>

#include <string>

namespace veslora::Logs {

Q_DECLARE_LOGGING_CATEGORY(agents)      ///< sessions, requests and their answers
Q_DECLARE_LOGGING_CATEGORY(audio)       ///< sounds and their server
Q_DECLARE_LOGGING_CATEGORY(bus)         ///< the session's and the system's bus, and their services
Q_DECLARE_LOGGING_CATEGORY(hooks)       ///< scripts, and the agents' configurations
Q_DECLARE_LOGGING_CATEGORY(island)      ///< what it shows and where
Q_DECLARE_LOGGING_CATEGORY(music)       ///< players, and the helper that tells of them
Q_DECLARE_LOGGING_CATEGORY(power)       ///< keeping the machine awake
Q_DECLARE_LOGGING_CATEGORY(settings)    ///< the settings file
Q_DECLARE_LOGGING_CATEGORY(spool)       ///< what the hooks file, and the answers
Q_DECLARE_LOGGING_CATEGORY(start)       ///< backends chosen, commands from outside
Q_DECLARE_LOGGING_CATEGORY(system)      ///< files, processes, watches and clocks of the machine
Q_DECLARE_LOGGING_CATEGORY(transcripts) ///< the agents' use of tokens
Q_DECLARE_LOGGING_CATEGORY(updates)     ///< newer versions of the program
Q_DECLARE_LOGGING_CATEGORY(views)       ///< the views' files
Q_DECLARE_LOGGING_CATEGORY(x11)         ///< the display

/// Switches all of them on.
void beVerbose();

/// A path as a line may hold it: a transcript's folder is named after the user's project, so of those only
/// the folder that they lie in is told.
[[nodiscard]] std::string place(const std::string& path);

} // namespace veslora::Logs
