#!/bin/sh
# Stamps prepared numbers on PDF files with qpdf --overlay.
# Usage: with_qpdf.sh OUTPUT_FOLDER NUMBERS_FOLDER FILE...: the numbers of "a.pdf" are the pages of NUMBERS_FOLDER/a.pdf.
set -eu
output=$1
numbers=$2
shift 2
for file; do
    name=$(basename "$file")
    qpdf --overlay "$numbers/$name" -- --object-streams=generate "$file" "$output/$name"
done
