# Completion of brindle's command line in bash.

_brindle() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} option='' values='' command=''
  local options='--ui= --on-error= --codepage= --trace --max-statements= --max-seconds= --max-memory= --max-depth= --root= \
    --forbid= --help'
  COMPREPLY=()

  # "--option=value" comes as three words, the last of which may be missing.
  if [[ $word == '=' ]]; then
    option=$before
    word=''
  elif [[ $before == '=' && COMP_CWORD -gt 2 ]]; then
    option=${COMP_WORDS[COMP_CWORD - 2]}
  elif [[ $before == --* ]]; then
    option=$before
  fi
  case $option in
  --ui) values='auto window console' ;;
  --on-error) values='ask continue abort' ;;
  --codepage) values='UTF-8 windows-1252 cp437 cp850 ISO-8859-1' ;;
  --forbid) values='runexe externals automation serial' ;;
  --root)
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -d -- "$word")
    return
    ;;
  --max-*) return ;;
  --format) values='text json sarif' ;;
  esac
  if [[ -n $values ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$values" -- "$word")
    return
  fi

  ((COMP_CWORD > 1)) && command=${COMP_WORDS[1]}
  case $command in
  check) options='--format= --strict --function= --codepage= --codes --help' ;;
  encrypt | register | unregister) options='--help' ;;
  run) ;;
  *) options+=' --version' ;;
  esac
  if [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
    # The value follows at once.
    [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *= ]] && compopt -o nospace 2>/dev/null
    return
  fi

  local files='*'
  case $command in
  register | unregister) files='*.so' ;;
  encrypt) ((COMP_CWORD == 2)) && files='*.bas' ;;
  *) files='*.bas' ;;
  esac
  ((COMP_CWORD == 1)) && mapfile -t COMPREPLY < <(compgen -W 'run check encrypt register unregister' -- "$word")
  local file
  compopt -o filenames 2>/dev/null
  while IFS= read -r file; do
    # shellcheck disable=SC2053 # the pattern is meant as one
    [[ -d $file || $file == $files ]] && COMPREPLY+=("$file")
  done < <(compgen -f -- "$word")
}

complete -F _brindle brindle
