#!/bin/sh
# Exports the sheets here with LibreOffice Calc into the tables of the golden cases named
# "tables-" and "error-table-", as users' spreadsheets write them. Run by hand, once (it
# needs the package libreoffice-calc-nogui); the exports are committed, and no build or test
# runs LibreOffice. Usage: sh tests/sheets/export.sh
set -eu
here=$(cd "$(dirname "$0")" && pwd)
golden=$here/../golden
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# sheet, CSV filter options (separator, quote, LibreOffice's character set number, first
# line), extension of the export, golden case, file name there
export_sheet() {
  rm -rf "$work/out"
  soffice --headless --convert-to "$3:Text - txt - csv (StarCalc):$2" --outdir "$work/out" \
    "$here/$1" > /dev/null 2>&1
  mkdir -p "$golden/$4"
  cp "$work/out/${1%.fods}.$3" "$golden/$4/$5"
}

# 44 is a comma, 9 a tab, 34 the quote; 76 is UTF-8, 65535 UTF-16 (with a byte-order
# mark), 1 Windows-1252.
export_sheet products.fods 44,34,76,1 csv tables-windows-template products.csv
export_sheet products.fods 44,34,76,1 csv tables-rimba products.csv
export_sheet products.fods 9,34,65535,1 txt tables-tsv-utf16 products.txt
export_sheet products.fods 44,34,1,1 csv error-table-not-utf8 products.csv
export_sheet japanese.fods 44,34,76,1 csv tables-shift-jis japanese.csv
export_sheet logos.fods 44,34,76,1 csv tables-placed-csv logos.csv
export_sheet polish.fods 44,34,76,1 csv error-table-no-code towns.csv

# Excel's "CSV UTF-8" on Windows: the same cells after a byte-order mark, rows ended by
# CR LF, line breaks inside quoted cells left as LF. LibreOffice writes LF row ends on
# Linux, so they are made CR LF here: a line that closes every quote it opened ends a row.
export_sheet products.fods 44,34,76,1 csv tables-csv-bom-crlf products.csv
{
  printf '\357\273\277'
  awk '{ quotes += gsub(/"/, "\""); printf "%s%s\n", $0, (quotes % 2 == 0 ? "\r" : "") }' \
    "$golden/tables-csv-bom-crlf/products.csv"
} > "$work/bom-crlf.csv"
cp "$work/bom-crlf.csv" "$golden/tables-csv-bom-crlf/products.csv"
