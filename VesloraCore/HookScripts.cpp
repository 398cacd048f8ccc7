// SPDX-License-Identifier: MIT
// The scripts' texts. Both agents get the same event and permission scripts but for their directories and
// names, so each is one text with the differences marked by @words@.
#include "VesloraCore/HookScripts.h"

#include "VesloraCore/SupportNames.h"

#include <string>
#include <utility>
#include <vector>

namespace veslora::HookScripts {

namespace {

// Runs on each tool call of the agent. Beside the copy and the rename it starts mktemp alone; all else is
// built in.
constexpr std::string_view eventText = R"sh(#!/bin/sh
# Veslora: files one event of @agent@ for the island. Written by the program; changes are lost.
exec 2>/dev/null
umask 077
case $0 in */*) here=${0%/*} ;; *) here=. ;; esac
dir=$here/@spool@
[ -d "$dir" ] || mkdir -p "$dir"
# Nobody takes the events out any more: leave the disk alone.
set -- "$dir"/*
[ "$#" -lt @limit@ ] || exit 0
@parent@tmp=$(mktemp "$dir/tmp.XXXXXX") || exit 0
if ! cat >"$tmp" || ! mv -f "$tmp" "@event@"; then
    rm -f "$tmp"
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

# The one line of a file goes to $line, which stays empty if there is more than one.
read_line() {
    line='' rest=''
    [ -f "$1" ] || return 1
    { IFS= read -r line; IFS= read -r rest; } <"$1"
    [ -z "$rest" ] || line=''
}

# Only digits, and few enough to count with; without the leading zeros that would make it octal.
read_number() {
    case $1 in '' | *[!0123456789]* | ???????????????????*) return 1 ;; esac
    number=${1#"${1%%[!0]*}"}
    number=${number:-0}
}

# Whether the program gave a sign of life in the last six seconds.
program_lives() {
    read_line "$here/heartbeat" && read_number "$line" || return 1
    beat=$number
    read_number "$(date +%s)" || return 1
    [ "$((number - beat))" -le 6 ]
}

# Where the program's process can be seen from here, its end is noticed at once. After a kill the file still names the
# one that is gone, until the next one has started.
process=''
find_process() {
    if [ -z "$process" ] && read_line "$here/pid" && read_number "$line" && [ -d "/proc/$number" ]; then
        process=/proc/$number
    fi
}

# Takes back what was filed and leaves the prompt to the agent.
leave() {
    rm -f "$tmp" "$request" "$answer"
    exit 0
}

program_lives || exit 0
read_number "${VESLORA_PERMISSION_WAIT:-20}" || number=20
polls=$((number * 5))

find_process

spool=$here/@spool@
answers=$here/@answers@
[ -d "$spool" ] || mkdir -p "$spool"
[ -d "$answers" ] || mkdir -p "$answers"
@parent@tmp=$(mktemp "$spool/tmp.XXXXXX") || exit 0
id=@prefix@${tmp##*.}
request=$spool/perm-$id.json
answer=$answers/$id
trap leave HUP INT TERM PIPE
rm -f "$answer"
if ! cat >"$tmp" || ! mv -f "$tmp" "$request"; then
    leave
fi

i=0
while [ "$i" -lt "$polls" ]; do
    if [ -e "$answer" ]; then
        read_line "$answer"
        rm -f "$answer"
        case $line in
        allow) printf '%s' '{"hookSpecificOutput":{"hookEventName":"PermissionRequest","decision":{"behavior":"allow"}}}' ;;
        deny) printf '%s' '{"hookSpecificOutput":{"hookEventName":"PermissionRequest","decision":{"behavior":"deny","message":"Declined from Veslora"}}}' ;;
        esac
        exit 0
    fi
    [ -e "$here/heartbeat" ] || leave
    [ -z "$process" ] || [ -d "$process" ] || leave
    if [ "$((i % 5))" -eq 4 ]; then
        program_lives || leave
        find_process
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

// Codex's process is told by the file's name, since its payload does not tell.
constexpr std::string_view parentText =
    R"sh(case ${PPID:-} in '' | *[!0123456789]*) parent=0 ;; *) parent=$PPID ;; esac
)sh";

using Words = std::vector<std::pair<std::string_view, std::string_view>>;

std::string filled(std::string_view pattern, Words words) {
    const std::string limit = std::to_string(spoolLimit);
    words.emplace_back("limit", limit);
    std::string text(pattern);
    for (const auto& [word, meaning] : words) {
        const std::string mark = "@" + std::string(word) + "@";
        for (std::size_t at = text.find(mark); at != std::string::npos;
             at = text.find(mark, at + meaning.size()))
            text.replace(at, mark.size(), meaning);
    }
    return text;
}

Words claudeWords() {
    return {{"agent", "Claude Code"},
            {"spool", SupportNames::claudeSpool},
            {"answers", SupportNames::claudeAnswers},
            {"parent", ""},
            {"prefix", ""},
            {"event", "$tmp.json"}};
}

Words codexWords() {
    return {{"agent", "Codex"},
            {"spool", SupportNames::codexSpool},
            {"answers", SupportNames::codexAnswers},
            {"parent", parentText},
            {"prefix", "$parent-"},
            {"event", "$dir/ev-$parent-${tmp##*.}.json"}};
}

} // namespace

const std::array<Script, 5>& all() {
    static const std::string claudeEvent = filled(eventText, claudeWords());
    static const std::string claudePermission = filled(permissionText, claudeWords());
    static const std::string codexEvent = filled(eventText, codexWords());
    static const std::string codexPermission = filled(permissionText, codexWords());
    static const std::array<Script, 5> scripts = {{
        {SupportNames::claudeHook, claudeEvent},
        {SupportNames::claudePermission, claudePermission},
        {SupportNames::claudeStatusLine, statusLineText},
        {SupportNames::codexHook, codexEvent},
        {SupportNames::codexPermission, codexPermission},
    }};
    return scripts;
}

std::string_view text(std::string_view fileName) {
    for (const Script& script : all()) {
        if (script.fileName == fileName)
            return script.text;
    }
    return {};
}

} // namespace veslora::HookScripts
