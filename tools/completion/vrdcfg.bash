# Completion of vrdcfg in bash: commands, options, and the names that the installation has.

# Completes $current among the lines of the standard input. Names may hold blanks and shell characters.
_vrdcfg_among() {
  local line
  while IFS= read -r line; do
    [[ $line == "$current"* ]] && COMPREPLY+=("$(printf '%q' "$line")")
  done
}

# What the installation that the line names so far answers. Standard input is no query result here.
_vrdcfg_ask() {
  "$program" "${context[@]}" "$@" 2>/dev/null </dev/null
}

_vrdcfg() {
  local program=${1/#\~/$HOME} current=$2 previous=$3
  local commands='get list dump explain where path startup check fonts component locales
    content-locales time-zones currencies map-locale normalize-locale keygen protect'
  local -a context=()
  local command='' word i
  COMPREPLY=()

  for ((i = 1; i < COMP_CWORD; ++i)); do
    word=${COMP_WORDS[i]}
    case $word in
      --root | --bin | --query)
        [[ ${COMP_WORDS[i + 1]} == = ]] && ((++i))
        ((++i < COMP_CWORD)) || break
        [[ ${COMP_WORDS[i]} == - ]] || context+=("$word" "${COMP_WORDS[i]/#\~/$HOME}")
        ;;
      --in | --parameter)
        [[ ${COMP_WORDS[i + 1]} == = ]] && ((++i))
        ((++i))
        ;;
      -*) ;;
      *) command=${command:-$word} ;;
    esac
  done

  # Readline takes "--root=DIR" for three words.
  [[ $current == = ]] && current=''
  [[ $previous == = ]] && previous=${COMP_WORDS[COMP_CWORD - 2]}
  case $previous in
    --root | --bin)
      compopt -o filenames 2>/dev/null
      mapfile -t COMPREPLY < <(compgen -d -- "$current")
      return
      ;;
    --query)
      compopt -o filenames 2>/dev/null
      mapfile -t COMPREPLY < <(compgen -f -- "$current")
      return
      ;;
    --in)
      _vrdcfg_among < <(_vrdcfg_ask locales | cut -d' ' -f1)
      return
      ;;
    --parameter)
      _vrdcfg_among < <(_vrdcfg_ask list)
      return
      ;;
  esac

  if [[ $current == -* ]]; then
    local options='--root --bin --query --json --help --version'
    case $command in
      get) options+=' --xml --decrypt' ;;
      list) options+=' --values --decrypt' ;;
      dump | explain) options+=' --decrypt' ;;
      locales | content-locales | time-zones | currencies) options+=' --in' ;;
      map-locale) options+=' --content' ;;
      protect) options+=' --parameter' ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    return
  fi

  case $command in
    '') mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$current") ;;
    get | list | explain | startup) _vrdcfg_among < <(_vrdcfg_ask list) ;;
    map-locale) _vrdcfg_among < <(_vrdcfg_ask content-locales | cut -d' ' -f1) ;;
  esac
}

complete -F _vrdcfg vrdcfg
