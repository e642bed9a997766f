#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# The LV2 bundle under others' tools: lv2-tools-test.sh BUNDLE QUOREL-SETUP SCRATCH-FOLDER
set -euo pipefail
bundle="$1"
setup="$2"
scratch="$3"
uri=http://ostrand.org/plugins/quorel

rm -rf "$scratch"
mkdir -p "$scratch/lv2"
ln -s "$bundle" "$scratch/lv2/"
"$setup" --prefix "$scratch" > "$scratch/setup.log"
export XDG_CONFIG_HOME="$scratch/config" XDG_DATA_HOME="$scratch/data" LV2_PATH="$scratch/lv2:/usr/lib/lv2"

fail()
{
    echo "$*" >&2
    exit 1
}

# The bundle against the vocabularies that it uses. Those of groups and properties are written for ports alone; hosts read
# both of parameters, too.
mapfile -t vocabularies < <(find /usr/lib/lv2 -name '*.ttl' | sort)
said="$(sord_validate "${vocabularies[@]}" "$bundle"/*.ttl 2>&1 || true)"
grep -q '^Found .* errors among' <<< "$said" || fail "sord_validate gave up: $(tail -3 <<< "$said")"
others="$(awk -v RS='error: ' -v own="$uri" '
    !index($0, own) { next }
    /not in domain <http:\/\/lv2plug.in\/ns\/lv2core#Port>/ && /port-groups#group|lv2core#portProperty/ { next }
    { print }' <<< "$said")"
[[ -z "$others" ]] || fail "$(head -20 <<< "$others")"
echo "sord_validate: $(tail -1 <<< "$said")"

lv2ls | grep -qx "$uri" || fail "lv2ls doesn't list the plug-in"
info="$(lv2info "$uri")"
grep -q 'Name: *Quorel' <<< "$info" && grep -q 'Instrument' <<< "$info" || fail "$info"
