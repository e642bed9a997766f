#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Every binary below a folder of products for Windows: what it needs is the system's, what it offers is a plug-in's entry
# points alone, it is for 64 bits and has no debug information in it.
#   check-binaries.sh FOLDER
set -euo pipefail

system=" advapi32.dll comdlg32.dll dwmapi.dll dxgi.dll gdi32.dll imm32.dll kernel32.dll msvcrt.dll ole32.dll oleaut32.dll
 rpcrt4.dll shell32.dll shlwapi.dll user32.dll version.dll wininet.dll winmm.dll ws2_32.dll wsock32.dll "
tool=x86_64-w64-mingw32-objdump
failures=0
count=0

complain()
{
    echo "$1" >&2
    failures=$((failures + 1))
}

# check FILE EXPORTS
check()
{
    local file="$1" wanted="$2" headers offered library
    headers="$("$tool" -p "$file")" || true
    [[ "$headers" == *"file format pei-x86-64"* ]] || complain "$file isn't for 64 bits"

    for library in $(sed -n 's/^\tDLL Name: //p' <<< "$headers" | tr '[:upper:]' '[:lower:]'); do
        [[ "$system" == *[[:space:]]"$library"[[:space:]]* ]] || complain "$file needs $library"
    done

    offered="$(sed -n 's/^\t\[ *[0-9]*\] \([A-Za-z_].*\)/\1/p' <<< "$headers" | xargs)"
    [[ "$offered" == "$wanted" ]] || complain "$file offers \"$offered\", not \"$wanted\""

    if "$tool" -h "$file" | grep -q "\.debug_info"; then
        complain "$file has debug information in it"
    fi
    count=$((count + 1))
}

while IFS= read -r -d '' file; do
    case "$file" in
        *.dll) check "$file" VSTPluginMain ;;
        *.vst3) check "$file" "ExitDll GetPluginFactory InitDll" ;;
        *) check "$file" "" ;;
    esac
done < <(find "$1" -type f \( -name "*.dll" -o -name "*.vst3" -o -name "*.exe" \) -print0)

[[ "$count" -gt 0 ]] || complain "no binary in $1"
echo "$count binaries"
[[ "$failures" == 0 ]]
