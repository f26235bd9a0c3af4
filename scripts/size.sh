#!/usr/bin/env bash
# What the component adds to a host's binary, built the way a host ships it: Release with -Os,
# -ffunction-sections -fdata-sections, linked with --gc-sections, stripped.
#
#   scripts/size.sh [BUILD_DIR]          (default build/size)
#
# SIZE_CXX_FLAGS and SIZE_LINK_FLAGS replace the shipping flags above (to compare, e.g.
# SIZE_CXX_FLAGS=-O3 SIZE_LINK_FLAGS= for a host that tunes nothing).
#
# Method
# - The modules are built with those flags and installed into BUILD_DIR/prefix.
# - Whole component, one module at a time in layer order: a program is linked from an empty
#   main whose roots are every function and object with external linkage that the modules so far
#   define (-Wl,--undefined for each, as if the host called all of them), through the modules'
#   pkg-config files. A module's bytes are how much the stripped program grows when it joins.
#   Code that several modules share (templates, inline functions) counts for the lowest one that
#   uses it. System libraries (ICU, libcurl, libstdc++, ...) are shared objects: not counted.
# - The example host (examples/host, built through find_package): its stripped size minus an
#   empty program's, i.e. what a host that shows the design system and tokenizes a card pays.
# - Where the bytes go: the linker map of the whole-component program, summed per object file
#   and per input section (one function or object each, thanks to the section flags), demangled.
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build/size}
cxx_flags=${SIZE_CXX_FLAGS--Os -ffunction-sections -fdata-sections}
link_flags=${SIZE_LINK_FLAGS--Wl,--gc-sections}
limit=$((1536 * 1024)) # the target for the platform layer and the four modules together
modules=(platform platform_view AnyCodable Korvane KorvaneElements ToviUI sandbox)
pc_files=(tovi-platform tovi-platform-view tovi-anycodable tovi-korvane tovi-korvane-elements tovi-ui tovi-sandbox)
launcher=$(command -v ccache || true)

echo "== building the modules ($cxx_flags)" >&2
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release "-DCMAKE_CXX_FLAGS_RELEASE=$cxx_flags -DNDEBUG" \
    ${launcher:+-DCMAKE_CXX_COMPILER_LAUNCHER=$launcher} -DTOVI_BUILD_TESTS=OFF -DTOVI_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" -t "${modules[@]}" >&2
prefix=$(cd "$build" && pwd)/prefix
work=$build/size-check
rm -rf "$prefix" "$work"
mkdir -p "$work"
cmake --install "$build" --prefix "$prefix" >/dev/null
export PKG_CONFIG_PATH=$prefix/lib/pkgconfig

echo 'int main() {}' >"$work/empty.cpp"
# link_stripped OUTPUT ARGS...: links with the shipping flags and answers the stripped size.
link_stripped() {
    local out=$1; shift
    c++ -std=c++23 $cxx_flags $link_flags "$@" -o "$out"
    strip -o "$out.stripped" "$out"
    stat -c %s "$out.stripped"
}
empty=$(link_stripped "$work/empty" "$work/empty.cpp")

printf '%-18s %10s %10s\n' "module" "bytes" "running" >"$work/table"
previous=$empty
: >"$work/roots"
for i in "${!modules[@]}"; do
    archive=$prefix/lib/lib${pc_files[$i]}.a
    nm --defined-only -g --format=posix "$archive" 2>/dev/null | awk '$2 ~ /^[TDRB]$/ { print "-Wl,--undefined=" $1 }' \
        >>"$work/roots"
    read -r -a libs <<<"$(pkg-config --static --libs "${pc_files[@]:0:i+1}")"
    size=$(link_stripped "$work/whole" "$work/empty.cpp" "@$work/roots" -Wl,-Map="$work/whole.map" "${libs[@]}")
    printf '%-18s %10d %10d\n' "${modules[$i]}" $((size - previous)) $((size - empty)) >>"$work/table"
    previous=$size
    [[ ${modules[$i]} == ToviUI ]] && core=$((size - empty))
done

cmake -S examples/host -B "$work/host" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_BUILD_TYPE=Release \
    "-DCMAKE_CXX_FLAGS_RELEASE=$cxx_flags -DNDEBUG" "-DCMAKE_EXE_LINKER_FLAGS=$link_flags -s" \
    ${launcher:+-DCMAKE_CXX_COMPILER_LAUNCHER=$launcher} >/dev/null
cmake --build "$work/host" >&2
example=$(($(stat -c %s "$work/host/tovi_host_example") - empty))

echo "Bytes each module adds to a host linking all of it (stripped; an empty program is $empty bytes):"
cat "$work/table"
printf '%-18s %10d   (target %d: %s)\n' "platform..ToviUI" "$core" "$limit" \
    "$([[ $core -le $limit ]] && echo met || echo MISSED)"
printf '%-18s %10d   (examples/host: design system preview and a tokenized card)\n' "example host" "$example"

# The map's input sections: "<output section> <input section> <bytes> <object>", file bytes only.
awk '
/^Linker script and memory map/ { started = 1; next }
!started { next }
/^\.[^ ]/ { output = $1 }
/^ \.[^ ]/ { name = $1; if (NF >= 4) record($3, $4); else pending = 1; next }
pending && /^ +0x/ { if (NF >= 3) record($2, $3); pending = 0; next }
{ pending = 0 }
function hex(text,    i, n) {
    n = 0
    for (i = 3; i <= length(text); i++) n = n * 16 + index("0123456789abcdef", substr(tolower(text), i, 1)) - 1
    return n
}
function record(size, file) {
    if (output !~ /^\.(text|rodata|data|data\.rel\.ro|eh_frame|gcc_except_table|init_array|tdata)$/) return
    if (hex(size) > 0) print output, name, hex(size), file
}' "$work/whole.map" >"$work/sections"

echo
echo "Largest objects (code, data and unwind tables):"
awk '{ file = $4; sub(/.*\/lib/, "", file); sub(/\.a\(/, ": ", file); sub(/\.o\)$/, "", file); bytes[file] += $3 }
     END { for (f in bytes) printf "%10d  %s\n", bytes[f], f }' "$work/sections" | sort -rn | sed -n 1,15p
echo
echo "Largest functions and data:"
awk '$1 != ".eh_frame" { name = $2; sub(/^\.(text|rodata|data\.rel\.ro|data\.rel|data|gcc_except_table)(\.(local|unlikely|hot|startup))?\./, "", name)
       module = $4; sub(/.*\/lib/, "", module); sub(/\.a\(.*/, "", module); if (module ~ /\//) module = "(system)"
       printf "%10d  %-22s %s\n", $3, module, name }' "$work/sections" | sort -rn | sed -n 1,25p | c++filt
