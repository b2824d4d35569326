#!/usr/bin/env bash
# SPDX-FileCopyrightText: Aerolith developers
# Checks every file of the tree for what no compiler refuses. Prints each offence and fails.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
dev/install_packages.sh style

failed=0
complain() {
    echo "style: $1" >&2
    failed=1
}

# offence <what> <grep pattern> <file>...: complains about each line that matches.
offence() {
    local what=$1 pattern=$2 hits
    shift 2
    [[ $# -gt 0 ]] || return 0
    hits=$(grep -nIP -- "$pattern" "$@" /dev/null || true)
    [[ -z $hits ]] || complain "$what"$'\n'"$hits"
}

# Tables, splines and expected outputs are data: their blanks, tabs and line ends are content.
is_data() {
    [[ $1 == *.tsv || $1 == samples/* || $1 == fuzzing/corpus/* || $1 == */golden/* || $1 == */data/* ]]
}

texts=() sources=() scripts=() code=() everything=()
while IFS= read -r -d '' file; do
    [[ -f $file && ! -L $file ]] || continue
    everything+=("$file")
    first=$(head -c 2 "$file" | tr -d '\0')
    if [[ $first == '#!' && ! -x $file ]]; then
        complain "$file: a script that is not executable"
    elif [[ $first != '#!' && -x $file ]]; then
        complain "$file: executable, but no script"
    fi
    is_data "$file" && continue
    # An empty pattern matches every text, no binary file.
    { [[ ! -s $file ]] || grep -qI '' "$file"; } || continue
    texts+=("$file")
    case $file in
    *.cpp | *.h) sources+=("$file") ;;
    *.py | *.cmake | CMakeLists.txt | */CMakeLists.txt) code+=("$file") ;;
    *.sh) scripts+=("$file") ;;
    *) [[ $first == '#!' ]] && head -n 1 "$file" | grep -q bash && scripts+=("$file") ;;
    esac
    [[ -s $file && -n $(tail -c 1 "$file") ]] && complain "$file: no newline at its end"
done < <(git ls-files -z --cached --others --exclude-standard)

offence "carriage return" '\r$' "${texts[@]}"
offence "tab" '\t' "${texts[@]}"
offence "blank at the end of a line" ' $' "${texts[@]}"
offence "an include that walks round the layers" '^\s*#\s*include\s*[<"]\.\./' "${sources[@]}"
offence "an include that names a module of Qt" \
    '^\s*#\s*include\s*[<"]Qt[A-Z]\w*/' "${sources[@]}"
# A private header (_p.h) belongs to the sources and tests of its own folder.
for file in "${sources[@]}"; do
    folder=${file#tests/}
    folder=${folder%%/*}
    private=$(grep -P "^\s*#\s*include\s*[<\"](?!$folder/)[^\"<>]*_p\.h[\">]" "$file" || true)
    if [[ $file == "$folder"/*.h && $file != *_p.h ]]; then
        private+=$(grep -P '^\s*#\s*include\s*[<"][^"<>]*_p\.h[">]' "$file" || true)
    fi
    [[ -z $private ]] || complain "$file: includes a private header: $private"
done
offence "a note instead of a change" '\b(TO''DO|FIX''ME)\b' "${texts[@]}"
offence "a number that only a tracker or a document elsewhere explains" \
    '\b([Ii]ssue|[Tt]icket|[Pp]art) #?[0-9]' "${texts[@]}"
offence "a path of one machine" '(?<![\w.}$)/])/(root|mnt|work)/' "${texts[@]}"

for file in "${sources[@]}" "${scripts[@]}" "${code[@]}"; do
    head -n 2 "$file" | grep -q 'SPDX-FileCopyrightText: Aerolith developers' ||
        complain "$file: no SPDX line at its head"
done
if [[ ${#sources[@]} -gt 0 ]]; then
    clang-format-14 --dry-run --Werror "${sources[@]}" || complain "not formatted: dev/format.sh"
fi
shellcheck "${scripts[@]}" || complain "shellcheck"
desktop-file-validate share/applications/*.desktop || complain "desktop-file-validate"
report=$(appstreamcli validate --no-net share/metainfo/*.xml) || complain "appstreamcli"$'\n'"$report"
# Names that stay as they are, a mistyped verb, and short names of variables.
codespell --ignore-words-list=backround,symetric,symmetri,chek,fro,nd,te,ue "${texts[@]}" ||
    complain "codespell"
xmllint --noout share/mime/packages/*.xml || complain "xmllint"

[[ $failed -eq 0 ]] || exit 1
echo "style: ${#everything[@]} files are clean"
