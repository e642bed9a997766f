# bash completion for quorel, quorel-render, quorel-setup and quorel-presets            -*- shell-script -*-
# SPDX-License-Identifier: GPL-3.0-or-later

# _quorel_lines COMMAND...: the lines that it prints and that go on from the present word, as completions, spaces and all.
_quorel_lines()
{
    local line word="${cur#[\"\']}"
    word="${word//\\/}"
    while IFS= read -r line; do
        [[ "$line" == "$word"* ]] && COMPREPLY+=("$(printf '%q' "$line")")
    done < <("$@" 2> /dev/null)
}

# Presets as FOLDER/NAME, folders, and categories, as the user's library has them.
_quorel_presets() { quorel-presets list | sed -n 's,^\([^ ].*/.*\)$,\1,p' | sed 's,  .*,,; /\/$/d'; }
_quorel_folders() { _quorel_presets | sed 's,/.*,,' | sort -u; }
_quorel_instruments() { quorel-render --list-instruments | sed 's/  .*//'; }
_quorel_effects() { quorel-render --list-effects | sed -n 's/^ *[0-9][0-9]*  *\([^ ].*\)$/\1/p' | sed 's/  .*//'; }

# What stands before the present word's "N=" stays as it is.
_quorel_numbered()
{
    local before="${cur%%=*}="
    [[ "$cur" == [1-4]=* ]] || { COMPREPLY=($(compgen -W "1= 2= 3= 4=" -- "$cur")); compopt -o nospace; return; }
    cur="${cur#*=}"
    _quorel_lines "$1"
    # Readline takes "=" as the end of a word, unless it is told otherwise.
    [[ "$COMP_WORDBREAKS" == *=* ]] || COMPREPLY=("${COMPREPLY[@]/#/$before}")
}

_quorel()
{
    local cur prev words cword
    _init_completion -n = || return
    local program="${1##*/}" help=("$1" --help) command= word

    if [[ "$program" == quorel-presets ]]; then
        for word in "${words[@]:1:cword-1}"; do
            [[ "$word" == -* || "$word" == */* ]] || { command="$word"; break; }
        done
        [[ -z "$command" ]] || help=("$1" "$command" --help)
    fi

    case "$prev" in
        --preset) _quorel_lines _quorel_presets; [[ "$program" == quorel ]] || _filedir qrl; return ;;
        --layer) _quorel_numbered _quorel_instruments; return ;;
        --fx) _quorel_numbered _quorel_effects; return ;;
        --prefix | --banks | --from) _filedir -d; return ;;
        -o | --output) _filedir '@(wav|flac)'; return ;;
        --input) _filedir '@(wav|aif|aiff|flac)'; return ;;
        --save-preset) _filedir qrl; return ;;
        --bits) COMPREPLY=($(compgen -W "16 24 32" -- "$cur")); return ;;
        --sort) COMPREPLY=($(compgen -W "name rating date" -- "$cur")); return ;;
        --param | --send | --rate | --block | --tempo | --tail | --rated | --author) return ;;
    esac

    if [[ "$cur" == -* ]]; then
        COMPREPLY=($(compgen -W '$("${help[@]}" 2> /dev/null | grep -oE -e "^ +-[-a-z,]+" | tr "," " ")' -- "$cur"))
        return
    fi

    case "$program" in
        quorel) _filedir qrl ;;
        quorel-render) _filedir '@(mid|midi)' ;;
        quorel-presets)
            if [[ -z "$command" ]]; then
                COMPREPLY=($(compgen -W '$("${help[@]}" | sed -n "/^Subcommands:/,/^\$/s/^  \([a-z]*\) .*/\1/p")' -- "$cur"))
            elif [[ "$command" == import ]]; then
                _filedir zip
            elif [[ "$command" == list || "$command" == export ]]; then
                _quorel_lines _quorel_folders
            else
                _quorel_lines _quorel_presets
                [[ ${#COMPREPLY[@]} -gt 0 ]] || _filedir qrl
            fi
            ;;
    esac
}

complete -F _quorel quorel quorel-render quorel-setup quorel-presets
