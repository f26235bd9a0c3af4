#!/usr/bin/env bash
# Fails when an include crosses a module seam the wrong way, or when a third-party header
# appears outside the folders allowed to use it. Run from CTest; prints one line per offence.
#
#   scripts/check_layering.sh [ROOT]
#
# Seams: ToviUI -> KorvaneElements -> Korvane -> AnyCodable, and each of them -> platform. Inside
# platform, the view engine builds on the services, the test doubles on both; no product library
# includes a test double, and only platform's own sources and its doubles see platform/internal.
set -euo pipefail
root=${1:-$(cd "$(dirname "$0")/.." && pwd)}
cd "$root"

git grep -n -E '^[[:space:]]*#[[:space:]]*include[[:space:]]*[<"]' -- '*.cpp' '*.hpp' '*.h' | awk '
BEGIN {
    # folder (the longest that matches a file wins) -> project include prefixes it may use
    allowed["platform/include/"] = "platform/"
    allowed["platform/src/"] = "platform/ platform/internal/"
    allowed["platform/view/"] = "platform/ platform/view/"
    allowed["platform/testing/"] = "platform/ platform/view/ platform/testing/ platform/internal/"
    allowed["AnyCodable/"] = "platform/ AnyCodable/"
    allowed["Korvane/"] = "platform/ AnyCodable/ Korvane/"
    allowed["KorvaneElements/"] = "platform/ platform/view/ AnyCodable/ Korvane/ KorvaneElements/"
    allowed["ToviUI/"] = "platform/ platform/view/ AnyCodable/ Korvane/ KorvaneElements/ ToviUI/"
    allowed["sandbox/"] = "platform/ platform/view/ AnyCodable/ Korvane/ KorvaneElements/ ToviUI/ sandbox/"
    # the prefixes that name a part of the project, most specific first
    nProject = split("platform/view/ platform/testing/ platform/internal/ platform/ AnyCodable/ Korvane/ KorvaneElements/ ToviUI/ sandbox/", project, " ")
    # third-party header -> folders where it may appear; never in a public include/ folder
    third["curl/"] = "platform/src/ bench/ tests/"
    third["unicode/"] = "platform/src/ platform/view/src/"
    third["httplib.h"] = "platform/src/ apps/ tests/"
    third["boost/"] = "apps/browser/"
    third["nlohmann/"] = "AnyCodable/src/ apps/ tests/ bench/ fuzz/"
}
function isOneOf(text, list,    n, parts, i) {
    n = split(list, parts, " ")
    for (i = 1; i <= n; i++) if (text == parts[i]) return 1
    return 0
}
function startsWithAny(text, list,    n, parts, i) {
    n = split(list, parts, " ")
    for (i = 1; i <= n; i++) if (index(text, parts[i]) == 1) return 1
    return 0
}
{
    file = $0; sub(/:.*/, "", file)
    rest = substr($0, length(file) + 2)
    lineNo = rest; sub(/:.*/, "", lineNo)
    inc = rest; sub(/^[^<"]*[<"]/, "", inc); sub(/[>"].*/, "", inc)

    rules = ""; best = 0
    for (folder in allowed)
        if (index(file, folder) == 1 && length(folder) > best) { best = length(folder); rules = allowed[folder] }
    if (best > 0) {
        for (i = 1; i <= nProject; i++) {
            if (index(inc, project[i]) == 1) {
                if (!isOneOf(project[i], rules)) {
                    printf "%s:%s: includes %s across a seam (allowed here: %s)\n", file, lineNo, inc, rules
                    failures++
                }
                break
            }
        }
    }
    for (header in third) {
        if (index(inc, header) != 1) continue
        if (file ~ /\/include\// || !startsWithAny(file, third[header])) {
            printf "%s:%s: includes third-party %s outside its folders (%s)\n", file, lineNo, inc, third[header]
            failures++
        }
    }
}
END {
    if (failures > 0) { printf "layering: %d include(s) break the module seams\n", failures; exit 1 }
    print "layering: every include respects the module seams"
}'
