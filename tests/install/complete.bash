# complete.bash PREFIX: what the installed completions of receipt(1) and virtual-printer(1) offer.
prefix=$1
source "$prefix/share/bash-completion/completions/receipt"
cd "$prefix/share/printerslib/examples" || exit 1
failures=0

# complete WORD...: the offers for the last word, sorted, in one line.
complete_words() {
  COMP_WORDS=("$prefix/bin/receipt" "$@")
  COMP_CWORD=$#
  _receipt
  printf '%s\n' "${COMPREPLY[@]}" | sort | paste -sd ' '
}

# offers EXPECTED WORD...
offers() {
  local expected=$1 actual
  shift
  actual=$(complete_words "$@")
  [ "$actual" = "$expected" ] && return
  printf 'receipt %s: "%s" instead of "%s"\n' "$*" "$actual" "$expected" >&2
  failures=$((failures + 1))
}

# offers_all WORD...: the offers for an empty last word are these of standard input, and no others.
offers_all() {
  offers "$(sort | paste -sd ' ')" "$@"
}

"$prefix/bin/receipt" --help |
  sed -n 's/^  \([a-z][a-z0-9-]*\)  *[^ ].*/\1/p; $a --help\n--version' | offers_all ''
"$prefix/bin/receipt" models --json | sed -n 's/^ \{8\}"id": "\(.*\)",*$/\1/p' | offers_all models ''
offers 'render' ren
offers '' nosuchcommand ''
offers '--margin --model' render --m
offers 'CUSTOM_TG_2480_H CUSTOM_TG_2480_SE CUSTOM_VKP_80' render --model CUSTOM
offers 'html html-fragment json text' render --as ''
offers 'html html-fragment' render --as h
offers 'json listing pdf png svg text' decode --as ''
offers 'codes cuts fonts formats pages pictures ruler' selftest --only ''
offers 'CUSTOM_TG_2480_H CUSTOM_TG_2480_SE CUSTOM_VKP_80' decode --model CUSTOM
offers 'as-is lower upper' render --case ''
find "$prefix" -name 'printerslib_*.qm' | sed 's/.*printerslib_//; s/\.qm$//' | offers_all render --language ''
offers 'ru' preview --language ru
offers 'document html text' lint --as ''
offers 'endless-value entries-in-text' lint --explain en
offers 'kiosk.cpt kiosk.json' render kiosk
offers 'images' bbcode --images im
offers 'check remove repair save show' document ''
offers '--clean --codec' document save --c
offers 'after before' print --drawer ''
offers '--drawer --drawer-pin --dry-run' print --dr
offers '- device: file: serial: tcp: usb:' print --to ''
offers 'file:' print --to f
offers 'kiosk.cpt kiosk.json' print --to file : kiosk
offers "$(compgen -f | sort | paste -sd ' ')" print --to file :
offers 'device: serial: tcp: usb:' status --to ''
offers 'device: serial: tcp: usb:' print --spare ''
offers 'tcp:' drawer --to t
offers '--pin' drawer --p
offers 'CUSTOM_TG_2480_H CUSTOM_TG_2480_SE CUSTOM_VKP_80' print --spare-model CUSTOM
offers 'kiosk.cpt kiosk.json' drawer --config kiosk
offers 'all bidirectional brackets controls equals invisible tags' render --clean ''
offers 'export import show' settings ''
offers '--printer' settings export --p

source "$prefix/share/bash-completion/completions/virtual-printer"

# printer_offers EXPECTED WORD...
printer_offers() {
  local expected=$1 actual
  shift
  COMP_WORDS=("$prefix/bin/virtual-printer" "$@")
  COMP_CWORD=$#
  _virtual_printer
  actual=$(printf '%s\n' "${COMPREPLY[@]}" | sort | paste -sd ' ')
  [ "$actual" = "$expected" ] && return
  printf 'virtual-printer %s: "%s" instead of "%s"\n' "$*" "$actual" "$expected" >&2
  failures=$((failures + 1))
}

printer_offers '--link --listen --listing' --l
printer_offers 'CUSTOM_TG_2480_H CUSTOM_TG_2480_SE CUSTOM_VKP_80' --model CUSTOM
printer_offers 'hardware none software' --flow ''
printer_offers 'kiosk.cpt kiosk.json' --replay kiosk
exit $((failures > 0))
