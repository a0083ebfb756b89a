# Completion for k5ax in bash: verbs, options, the values of options, and files by the place where they stand.
# What there is to complete is read from the tool's own help, so that it is never behind the tool.

# The choices in a line of the help, one a line: of "mm|inch   Convert" mm and inch, of "table-table, head-table
# or head-head" these three.
_k5ax_choices() {
  local choices=${1%% *}
  if [[ $choices == *'|'* ]]; then
    printf '%s\n' "${choices//|/$'\n'}"
  elif [[ $choices == [a-z]*-*, ]]; then
    grep -oE '[a-z]+-[a-z]+' <<<"$1"
  fi
}

# Files that end in one of the given ways, and folders.
_k5ax_files() {
  local start=$1 file ending
  shift
  compopt -o filenames 2>/dev/null
  while IFS= read -r file; do
    for ending in "$@"; do
      if [[ -d $file || $file == *."$ending" ]]; then
        COMPREPLY+=("$file")
        break
      fi
    done
  done < <(compgen -f -- "$start")
}

_k5ax() {
  COMPREPLY=()
  local program=${COMP_WORDS[0]} word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
  # "--to=ma" comes as the three words "--to", "=" and "ma".
  if [[ $word == '=' ]]; then
    word=
  elif [[ $before == '=' ]]; then
    before=${COMP_WORDS[COMP_CWORD - 2]}
  fi

  local i verb=
  for ((i = 1; i < COMP_CWORD; ++i)); do
    if [[ ${COMP_WORDS[i]} != -* ]]; then
      verb=${COMP_WORDS[i]}
      break
    fi
  done

  # Of the help: verbs, options, which of them take a value, the names of the arguments, choices.
  local help line part=
  local -a words=() arguments=()
  local -A takes_value=() choices_of=()
  help=$("$program" ${verb:+"$verb"} --help 2>/dev/null) || return 0
  while IFS= read -r line; do
    case $line in
      'Usage: '*)
        [[ -n $verb && $line != *" $verb "* ]] && return 0  # no such verb
        read -ra arguments <<<"${line#*'[OPTIONS] '}"
        ;;
      [A-Z]*:) part=$line ;;
      '  '[a-z]*) [[ $part == Subcommands: ]] && words+=("$(read -r line _ <<<"$line" && echo "$line")") ;;
      '  '[A-Z]*)
        if [[ $part == Positionals: ]]; then
          read -r line rest <<<"$line"
          choices_of[$line]=$(_k5ax_choices "$rest")
        fi
        ;;
      '  -'*)
        local names=${line#  } value name rest
        names=${names%% *}
        value=${line#"  $names"}
        for name in ${names//,/ }; do
          [[ $name == --* ]] && words+=("$name")
          # A value's name follows after one blank, the description after several, or in the next line.
          if [[ $value == ' '[!' ']* ]]; then
            takes_value[$name]=1
            choices_of[$name]=$(_k5ax_choices "${value# }")
          fi
        done
        ;;
    esac
  done <<<"$help"

  if [[ $before == -* && -n ${takes_value[$before]} ]]; then
    if [[ -n ${choices_of[$before]} ]]; then
      mapfile -t COMPREPLY < <(compgen -W "${choices_of[$before]}" -- "$word")
    else
      _k5ax_files "$word" csv json k5m
    fi
    return 0
  fi
  if [[ -z $verb || $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "${words[*]}" -- "$word")
    return 0
  fi

  # Which argument is it? Options and their values do not count.
  local place=0 past_verb=
  for ((i = 1; i < COMP_CWORD; ++i)); do
    if [[ -z $past_verb ]]; then
      [[ ${COMP_WORDS[i]} == "$verb" ]] && past_verb=1
    elif [[ -n ${takes_value[${COMP_WORDS[i]}]} ]]; then
      [[ ${COMP_WORDS[i + 1]} == '=' ]] && ((++i))
      ((++i))
    elif [[ ${COMP_WORDS[i]} != --* ]]; then
      ((++place))
    fi
  done
  local argument=${arguments[place]}
  if [[ -n ${choices_of[$argument]} ]]; then
    mapfile -t COMPREPLY < <(compgen -W "${choices_of[$argument]}" -- "$word")
  elif [[ $argument == PATH ]]; then
    _k5ax_files "$word" csv
  elif [[ ${#argument} -gt 1 || $verb == diff ]]; then
    _k5ax_files "$word" json k5m
  fi
}

complete -F _k5ax k5ax
