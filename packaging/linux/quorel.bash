# bash completion for quorel, quorel-render, quorel-setup and quorel-presets            -*- shell-script -*-
# SPDX-License-Identifier: GPL-3.0-or-later

# _quorel_lines COMMAND...: the lines that it prints and that go on from the present word, as completions, spaces and all.
_quorel_lines()
{
    local line word="${cur#[\"\']}"
    word="${word//\\/}"
    while IFS= read -r line; do
        [[ "$line" == "$word"* ]] || continue
        # Readline puts what follows an opening quote between quotes by itself.
        [[ "$cur" == [\"\']* ]] && COMPREPLY+=("$line") || COMPREPLY+=("$(printf '%q' "$line")")
    done < <("$@" 2> /dev/null)
}

# Any of these programs sets a user up who starts it for the first time, which a Tab is not to do.
_quorel_is_set_up() { [[ ${#library[@]} -gt 0 || -e "${XDG_CONFIG_HOME:-$HOME/.config}/Ostrand/Registry.xml" ]]; }

# Presets as FOLDER/NAME, folders, and categories, as the user's library has them, or the one that "library" names.
_quorel_presets() { ! _quorel_is_set_up || quorel-presets "${library[@]}" list | sed -n 's,^\([^ ].*/.*\)$,\1,p' | sed 's,  .*,,; /\/$/d'; }
_quorel_folders() { _quorel_presets | sed 's,/.*,,' | sort -u; }
_quorel_categories() { quorel-presets categories list | sed 's/^[^:]*: //; s/, /\n/g'; }
_quorel_instruments() { ! _quorel_is_set_up || quorel-render "${library[@]}" --list-instruments | sed 's/  .*//'; }
_quorel_effects() { quorel-render --list-effects | sed -n 's/^ *[0-9][0-9]*  *\([^ ].*\)$/\1/p' | sed 's/  .*//'; }

# What stands before the present word's "N=" stays as it is.
_quorel_numbered()
{
    local before="${cur%%=*}=" quote=
    [[ "$cur" != [\"\']* ]] || quote="${cur:0:1}"
    [[ "${cur#"$quote"}" == [1-4]=* ]] || { COMPREPLY=($(compgen -W "1= 2= 3= 4=" -- "$cur")); compopt -o nospace; return; }
    cur="$quote${cur#*=}"
    _quorel_lines "$1"
    # Between quotes, readline takes the whole word.
    [[ -z "$quote" ]] || { COMPREPLY=("${COMPREPLY[@]/#/${before#"$quote"}}"); return; }
    # Readline takes "=" as the end of a word, unless it is told otherwise.
    [[ "$COMP_WORDBREAKS" == *=* ]] || COMPREPLY=("${COMPREPLY[@]/#/$before}")
}

_quorel()
{
    local cur prev words cword
    local split
    _init_completion -s || return
    local program="${1##*/}" command= change= operands=0 library=() word i

    for ((i = 1; i < cword; ++i)); do
        word="${words[i]//[\\\"\']/}"
        case "$word" in
            --prefix | --banks)
                ((++i < cword)) || break
                word="$word=${words[i]//[\\\"\']/}"
                library+=("${word/=\~\//=$HOME/}") ;;
            --prefix=* | --banks=*) library+=("${word/=\~\//=$HOME/}") ;;
            -*) ;;
            *)
                if [[ -z "$command" ]]; then command="$word"
                elif [[ "$command" == categories && -z "$change" ]]; then change="$word"
                else ((++operands)); fi ;;
        esac
    done
    local help=("$1" --help)
    [[ "$program" != quorel-presets || -z "$command" ]] || help=("$1" "$command" ${change:+"$change"} --help)

    case "$prev" in
        --preset) _quorel_lines _quorel_presets; [[ "$program" == quorel ]] || _filedir qrl; return ;;
        --layer) _quorel_numbered _quorel_instruments; return ;;
        --fx) _quorel_numbered _quorel_effects; return ;;
        --prefix | --banks | --from) _filedir -d; return ;;
        -c | --category) _quorel_lines _quorel_categories; return ;;
        --to | --folder) _quorel_lines _quorel_folders; return ;;
        -o | --output)
            if [[ "$program" == quorel-presets ]]; then _filedir zip; else _filedir '@(wav|flac)'; fi
            return ;;
        --input) _filedir '@(wav|aif|aiff|flac)'; return ;;
        --save-preset) _filedir qrl; return ;;
        --bits) COMPREPLY=($(compgen -W "16 24 32" -- "$cur")); return ;;
        --sort) COMPREPLY=($(compgen -W "name rating date" -- "$cur")); return ;;
        --param | --send | --rate | --block | --tempo | --tail | --rated | --author | --comment) return ;;
    esac

    if [[ "$cur" == -* ]]; then
        COMPREPLY=($(compgen -W '$("${help[@]}" 2> /dev/null | grep -oE -e "^ +-[-a-z,]+" | tr "," " ")' -- "$cur"))
        return
    fi

    case "$program" in
        quorel) _filedir '@(qrl|zip|mid|midi)' ;;
        quorel-render) _filedir '@(mid|midi)' ;;
        quorel-presets)
            if [[ -z "$command" || ("$command" == categories && -z "$change") ]]; then
                COMPREPLY=($(compgen -W '$("${help[@]}" | sed -n "/^Subcommands:/,/^\$/s/^  \([a-z]*\) .*/\1/p")' -- "$cur"))
            elif [[ "$command" == rate && "$operands" -gt 0 ]]; then
                COMPREPLY=($(compgen -W "0 1 2 3 4 5" -- "$cur"))
            elif [[ "$command" == categories && "$change" == list ]]; then
                return
            elif [[ "$command" == categories && "$operands" -gt 0 ]]; then
                _quorel_lines _quorel_categories
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
