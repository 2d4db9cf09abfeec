# Completion of brisel for bash.

_brisel() {
  local word="${COMP_WORDS[COMP_CWORD]}" before="${COMP_WORDS[COMP_CWORD - 1]}" command="" i
  for ((i = 1; i < COMP_CWORD; i++)); do
    case "${COMP_WORDS[i]}" in
      convert | info | layout | generate | automate) command="${COMP_WORDS[i]}"; break ;;
    esac
  done
  COMPREPLY=()

  case "$command $before" in
    "convert --to") COMPREPLY=($(compgen -W "dim svg png pdf" -- "$word")); return ;;
    "convert --scale") return ;;
    "generate --template")
      COMPREPLY=($(compgen -W "$(brisel generate --list 2>/dev/null)" -- "$word") $(compgen -f -X '!*.tml' -- "$word"))
      return ;;
    "generate --class") return ;;
    "generate -o" | "generate --output") COMPREPLY=($(compgen -d -- "$word")); return ;;
    "layout --style") COMPREPLY=($(compgen -W "%HIERARCHY% MATRIX RANDOM SPRING" -- "$word")); return ;;
  esac

  local options="-h --help" endings="dim|uml|xmi|ecore"
  case "$command" in
    "") options+=" --version --one-model" ;;
    convert) options+=" --to --scale"; endings+="|svg|png|pdf" ;;
    info) options+=" --json" ;;
    layout) options+=" --style -o --output"; endings+="|json" ;;
    generate) options+=" --template -o --output --class --force --list" ;;
    automate) options+=" --window"; endings="" ;;
  esac
  if [[ "$word" == -* ]]; then
    COMPREPLY=($(compgen -W "$options" -- "$word"))
    return
  fi

  [[ -n "$command" ]] || COMPREPLY=($(compgen -W "convert info layout generate automate" -- "$word"))
  [[ -n "$endings" ]] || return
  local file
  while IFS= read -r file; do
    if [[ -d "$file" || "$file" =~ \.($endings)$ ]]; then COMPREPLY+=("$file"); fi
  done < <(compgen -f -- "$word")
  compopt -o filenames 2>/dev/null
}

complete -F _brisel brisel
