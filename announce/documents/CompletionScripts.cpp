#include "announce/documents/CompletionScripts.h"

#include "announce/basics/Failure.h"

#include <map>

// Each script hands the words up to the cursor to `announce complete`, which prints a candidate a line, with
// a tab and a description behind it; the line ":files" asks for the names of files.
namespace {

constexpr const char* kBash = R"SCRIPT(# shellcheck shell=bash
# Completion of announce for bash.

_announce() {
    # Bash takes words apart at : and =; they are put together again.
    local -a words=()
    local piece last="" index
    for ((index = 1; index <= COMP_CWORD; ++index)); do
        piece=${COMP_WORDS[index]}
        if [[ ${#words[@]} -gt 0 && ( $piece == [:=]* || $last == *[:=] ) ]]; then
            words[${#words[@]} - 1]+=$piece
        else
            words+=("$piece")
        fi
        last=$piece
    done
    # Without the quotes of the shell.
    local quote=""
    [[ ${words[-1]} == [\"\']* ]] && quote=${words[-1]:0:1}
    for index in "${!words[@]}"; do
        piece=${words[index]#[\"\']}
        piece=${piece%[\"\']}
        words[index]=${piece//\\/}
    done
    # What stands before the last : or = stays on the line; bash replaces what is behind it.
    local kept=""
    [[ ${words[-1]} == *[:=]* && -z $quote ]] && kept=${words[-1]%"${words[-1]##*[:=]}"}
    COMPREPLY=()
    local candidate
    while IFS=$'\t' read -r candidate _; do
        if [[ $candidate == :files ]]; then
            compopt -o filenames 2>/dev/null
            while IFS= read -r piece; do COMPREPLY+=("$piece"); done < <(compgen -f -- "${words[-1]}")
            continue
        fi
        candidate=${candidate#"$kept"}
        [[ -n $quote ]] || printf -v candidate %q "$candidate"
        COMPREPLY+=("$candidate")
    done < <(announce complete "${words[@]}" 2>/dev/null)
}

complete -F _announce announce
)SCRIPT";

constexpr const char* kZsh = R"SCRIPT(#compdef announce
# Completion of announce for zsh.

_announce() {
    local -a values shown
    local line
    for line in "${(@f)$(announce complete "${(@Q)words[2,CURRENT]}" 2>/dev/null)}"; do
        [[ -n $line ]] || continue
        if [[ $line == :files ]]; then
            _files
            return
        fi
        values+=("${line%%$'\t'*}")
        shown+=("${line/$'\t'/ -- }")
    done
    compadd -l -d shown -a values
}

if [[ ${funcstack[1]} == _announce ]]; then
    _announce "$@"
else
    compdef _announce announce
fi
)SCRIPT";

constexpr const char* kFish = R"SCRIPT(# Completion of announce for fish.

function __announce_complete
    set -l words (commandline -opc)
    set -l current (commandline -ct)
    for line in (announce complete $words[2..-1] "$current" 2>/dev/null)
        if test "$line" = :files
            __fish_complete_path "$current"
        else
            echo $line
        end
    end
end

complete -c announce -f -a '(__announce_complete)'
)SCRIPT";

} // namespace

std::string CompletionScript(const std::string& shell) {
    static const std::map<std::string, const char*> kScripts{{"bash", kBash}, {"fish", kFish}, {"zsh", kZsh}};
    const auto script = kScripts.find(shell);
    if (script == kScripts.end())
        throw Failure(ExitStatus::Usage, "there is no completion for \"" + shell + "\"", "bash, zsh or fish");
    return script->second;
}
