// SPDX-License-Identifier: MIT
// The scripts' texts. All agents get the same event and permission scripts but for their directories and
// names, so each is one text with the differences marked by @words@.
#include "VesloraCore/Agents/Hooks/HookScripts.h"

#include "VesloraCore/Agents/Hooks/AgentHookNames.h"

#include <string>
#include <utility>
#include <vector>

namespace veslora::HookScripts {

namespace {

// Takes in what the agent has still to say before a script ends early, so that the agent never writes into a
// closed pipe. An agent that does not come to an end is left after two seconds, where the system has the tool
// for that; one that is no pipe but a terminal, at once.
constexpr std::string_view drainText = R"sh(
# Reads what the agent has still to say, so that it does not write into a closed pipe.
drain() {
    [ ! -t 0 ] || return 0
    if command -v timeout >/dev/null; then timeout 2 cat >/dev/null; else cat >/dev/null; fi
}
)sh";

// Runs on each tool call of the agent. Beside the copy and the rename it starts mktemp alone; all else is
// built in.
constexpr std::string_view eventText = R"sh(#!/bin/sh
# Veslora: files one event of @agent@ for the island. Written by the program; changes are lost.
exec 2>/dev/null
umask 077
case $0 in */*) here=${0%/*} ;; *) here=. ;; esac
dir=$here/@spool@
@drain@
[ -d "$dir" ] || mkdir -p "$dir"
# Where a link would lead elsewhere, or nobody takes the events out any more: leave the disk alone.
set -- "$dir"/*
if [ -L "$dir" ] || [ "$#" -ge @limit@ ]; then
    drain
    exit 0
fi
@parent@if ! tmp=$(mktemp "$dir/tmp.XXXXXX"); then
    drain
elif ! cat >"$tmp" || ! mv -f "$tmp" "@event@"; then
    rm -f "$tmp"
    drain
fi
exit 0
)sh";

// The agent waits while this runs. An answer is looked for every fifth of a second, and the wait ends early
// as soon as the program is seen to be gone: heartbeat removed or old, or its process vanished.
constexpr std::string_view permissionText = R"sh(#!/bin/sh
# Veslora: asks the island what to answer to a permission prompt of @agent@. Whenever it prints nothing, the agent
# asks in its own terminal. Written by the program; changes are lost.
exec 2>/dev/null
umask 077
case $0 in */*) here=${0%/*} ;; *) here=. ;; esac
newline='
'
@drain@
# The text of a file goes to $text, without the newlines at its end. Whatever lies there, little of it is read, and
# nothing of a pipe or a device.
read_file() {
    text=''
    [ -f "$1" ] || return 1
    text=$(dd bs=32 count=1 <"$1")
}

# Only digits, and few enough to count with; without the leading zeros that would make it octal.
read_number() {
    case $1 in '' | *[!0123456789]* | ???????????????????*) return 1 ;; esac
    number=${1#"${1%%[!0]*}"}
    number=${number:-0}
}

# Whether the program gave a sign of life in the last six seconds.
program_lives() {
    read_file "$here/heartbeat" && read_number "$text" || return 1
    beat=$number
    read_number "$(date +%s)" || return 1
    [ "$((number - beat))" -le 6 ]
}

# Finds the program's process, so that its end is noticed at once. False where it has ended already: the file still
# names one that is missing, and its second line says that the program counts processes as this script does. In a
# container it may not.
find_process() {
    [ -z "$process" ] || return 0
    read_file "$here/pid" && read_number "${text%%"$newline"*}" || return 0
    if [ -d "/proc/$number" ]; then
        process=/proc/$number
        return 0
    fi
    case $text in *"$newline"pid:*) ;; *) return 0 ;; esac
    [ "${text#*"$newline"}" != "$(readlink /proc/self/ns/pid)" ]
}

# Takes back what was filed and leaves the prompt to the agent.
leave() {
    rm -f "$tmp" "$request" "$answer"
    exit 0
}

process=''
spool=$here/@spool@
answers=$here/@answers@
if ! program_lives || ! find_process || [ -L "$spool" ] || [ -L "$answers" ]; then
    drain
    exit 0
fi
read_number "${VESLORA_PERMISSION_WAIT:-@wait@}" || number=@wait@
polls=$((number * 5))

[ -d "$spool" ] || mkdir -p "$spool"
[ -d "$answers" ] || mkdir -p "$answers"
@parent@if ! tmp=$(mktemp "$spool/tmp.XXXXXX"); then
    drain
    exit 0
fi
id=@prefix@${tmp##*.}
request=$spool/perm-$id.json
answer=$answers/$id
trap leave HUP INT TERM PIPE
rm -f "$answer"
if ! cat >"$tmp" || ! mv -f "$tmp" "$request"; then
    drain
    leave
fi

i=0
while [ "$i" -lt "$polls" ]; do
    if [ -e "$answer" ]; then
        read_file "$answer"
        rm -f "$answer"
        case $text in
        allow) printf '%s' '{"hookSpecificOutput":{"hookEventName":"PermissionRequest","decision":{"behavior":"allow"}}}' ;;
        deny) printf '%s' '{"hookSpecificOutput":{"hookEventName":"PermissionRequest","decision":{"behavior":"deny","message":"Declined from Veslora"}}}' ;;
        esac
        exit 0
    fi
    [ -e "$here/heartbeat" ] || leave
    [ -z "$process" ] || [ -d "$process" ] || leave
    if [ "$((i % 5))" -eq 4 ]; then
        program_lives || leave
        find_process || leave
    fi
    sleep 0.2
    i=$((i + 1))
done
exit 0
)sh";

// The user's own status line, where there was one, goes on showing, with the file mode mask and the standard
// error that it had.
constexpr std::string_view statusLineText = R"sh(#!/bin/sh
# Veslora: keeps the newest status of each session for the island and prints the status line. Written by the program;
# changes are lost.
case $0 in */*) here=${0%/*} ;; *) here=. ;; esac

# Prints the text or number at a dotted path of the status; nothing where there is none.
get() { printf '%s' "$in" | "$here/json-value" "$1"; }

# Keeps the status under the session's name.
keep() {
    dir=$here/statusline
    [ ! -L "$dir" ] || return
    [ -d "$dir" ] || mkdir -m 700 "$dir"
    id=$(get session_id)
    case $id in
    '' | *[!ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-]*) id=unknown ;;
    esac
    tmp=''
    trap 'rm -f "$tmp"; exit 0' HUP INT TERM
    tmp=$(mktemp "$dir/tmp.XXXXXX") || return
    if ! printf '%s' "$in" >"$tmp" || ! mv -f "$tmp" "$dir/$id.json"; then
        rm -f "$tmp"
    fi
}

# Adds the percentage $2, named $1, to the line, without its fraction.
add_percentage() {
    case $2 in
    '' | *[!0123456789.]*) ;;
    *) line="$line · $1 ${2%%.*}%" ;;
    esac
}

make_line() {
    line=$(get model.display_name)
    add_percentage ctx "$(get context_window.used_percentage)"
    five=$(get rate_limits.five_hour.used_percentage)
    [ -n "$five" ] || five=$(get rate_limits.five_hour.utilization)
    add_percentage 5h "$five"
}

{
    in=$(cat)
    keep
    trap - HUP INT TERM
} 2>/dev/null

if [ -f "$here/statusline-wrapped" ]; then
    { wrapped=$(cat "$here/statusline-wrapped"); } 2>/dev/null
    printf '%s' "$in" 2>/dev/null | /bin/sh -c "$wrapped"
    exit 0
fi

{
    make_line
    printf '%s' "$line"
} 2>/dev/null
exit 0
)sh";

// Where the payload does not tell the agent's process, the file's name does.
constexpr std::string_view parentText =
    R"sh(case ${PPID:-} in '' | *[!0123456789]*) parent=0 ;; *) parent=$PPID ;; esac
)sh";

using Words = std::vector<std::pair<std::string_view, std::string_view>>;

std::string filled(std::string_view pattern, Words words) {
    const std::string limit = std::to_string(spoolLimit);
    const std::string wait = std::to_string(permissionWait);
    words.emplace_back("limit", limit);
    words.emplace_back("wait", wait);
    std::string text(pattern);
    for (const auto& [word, meaning] : words) {
        const std::string mark = "@" + std::string(word) + "@";
        for (std::size_t at = text.find(mark); at != std::string::npos;
             at = text.find(mark, at + meaning.size())) {
            text.replace(at, mark.size(), meaning);
        }
    }
    return text;
}

Words wordsOf(const AgentHookNames& names) {
    return {{"agent", names.agent},
            {"drain", drainText},
            {"spool", names.spool},
            {"answers", names.answers},
            {"parent", names.tellsParent ? parentText : ""},
            {"prefix", names.tellsParent ? "$parent-" : ""},
            {"event", names.tellsParent ? "$dir/ev-$parent-${tmp##*.}.json" : "$tmp.json"}};
}

std::vector<Script> allScripts() {
    std::vector<Script> scripts;
    for (const AgentHookNames& names : agentHookNames) {
        scripts.push_back({names.event, filled(eventText, wordsOf(names))});
        scripts.push_back({names.permission, filled(permissionText, wordsOf(names))});
    }
    scripts.push_back({SupportNames::claudeStatusLine, std::string(statusLineText)});
    return scripts;
}

} // namespace

const std::vector<Script>& all() {
    static const std::vector<Script> scripts = allScripts();
    return scripts;
}

std::string_view text(std::string_view fileName) {
    for (const Script& script : all()) {
        if (script.fileName == fileName) {
            return script.text;
        }
    }
    return {};
}

} // namespace veslora::HookScripts
