# Completion of corvane-product for bash.
_corvane_product() {
  local word=${COMP_WORDS[COMP_CWORD]}
  COMPREPLY=()
  if [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W '--check --json --strict --help --version' -- "$word")
  else
    compopt -o filenames
    mapfile -t COMPREPLY < <(compgen -d -- "$word"; compgen -f -X '!*.json?(l)' -- "$word")
  fi
}
complete -F _corvane_product corvane-product
