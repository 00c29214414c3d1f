#!/usr/bin/env bash
# The bundle as hosts read it: its description is valid, and it runs in the benchmark host of lilv.
# Usage: description_test.sh BUNDLE
set -euo pipefail
bundle=$1
uri=urn:looplibrary:loop-player

lv2_validate "$bundle"/*.ttl
LV2_PATH=$bundle/..:/usr/lib/lv2
export LV2_PATH
lv2ls | grep -qx "$uri"
# Seconds and the URI; nothing but a reason for a plug-in that it cannot run.
lv2bench "$uri" | grep -E "^[0-9.]+ $uri\$"
