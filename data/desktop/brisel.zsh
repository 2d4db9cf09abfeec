#compdef brisel
# Completion of brisel for zsh.

local models='*.(dim|uml|xmi|ecore)'
local -a commands=(
  'convert:write a model in another format'
  'info:count what a model holds'
  'layout:lay out a model or a plain graph'
  'generate:write source text that a template makes of a model'
  'automate:serve the components by JSON-RPC'
)

_brisel_first() {
  _alternative 'commands:command:{ _describe command commands }' "files:file:_files -g '$models'"
}

local help='(-h --help)'{-h,--help}'[print a help and exit]'
case "${words[2]}" in
  convert)
    _arguments $help '--to[format to write]:format:(dim svg png pdf)' \
      '--scale[scale of a .png]:factor:' "*:file:_files -g '*.(dim|uml|xmi|ecore|svg|png|pdf)'" ;;
  info)
    _arguments $help '--json[write JSON]' "*:file:_files -g '$models'" ;;
  layout)
    _arguments $help '--style[style of the layout]:style:(%HIERARCHY% MATRIX RANDOM SPRING)' \
      '(-o --output)'{-o,--output}'[where to write the drawing]:file:_files' \
      "*:file:_files -g '*.(dim|uml|xmi|ecore|json)'" ;;
  generate)
    _arguments $help '--template[template]:template:{ compadd ${(f)"$(brisel generate --list 2>/dev/null)"}; _files -g "*.tml" }' \
      '(-o --output)'{-o,--output}'[folder to write to]:folder:_files -/' \
      '*--class[class to write]:name:' '--force[overwrite files that differ]' \
      '--list[list the templates]' "*:file:_files -g '$models'" ;;
  automate)
    _arguments $help '--window[show what is created in windows]' ;;
  *)
    _arguments $help '--version[print the version and exit]' \
      '--one-model[open the files together, as parts of one model]' '*: :_brisel_first' ;;
esac
