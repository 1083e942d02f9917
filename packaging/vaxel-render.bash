# Completion of vaxel-render for bash. The program itself says which options it has.
_vaxel_render() {
  local word=$2 before=$3
  case $before in
    -o | -D | --answer | --area | --zoom | --zmm | --dpi | --max-seconds | --gap | --calibrate)
      [[ $before != -o ]] || mapfile -t COMPREPLY < <(compgen -f -- "$word")
      return ;;
  esac
  local help choices
  help=$("$1" --language en --help 2>/dev/null)
  # "--format svg|pdf" offers svg and pdf.
  choices=$(sed -nE "s/^ +(-[A-Za-z], )?${before} ([a-zA-Z0-9]+(\|[a-zA-Z0-9]+)+)( .*|$)/\2/p" <<<"$help")
  [[ $before != --page ]] || choices='A4|A3|Letter'
  if [[ $choices && $before == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "${choices//|/ }" -- "$word")
  elif [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$(grep -oE '^  (-[A-Za-z](, )?)?(--[a-z-]+)?' <<<"$help" | tr -d ,)" -- "$word")
  else
    mapfile -t COMPREPLY < <(compgen -f -X '!*.[dD][aA][tT]' -- "$word"; compgen -d -- "$word")
  fi
}
complete -o filenames -F _vaxel_render vaxel-render
