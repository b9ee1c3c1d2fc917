#!/usr/bin/env bash
# Signs the update feed that a build given -DTESSANE_UPDATE_FEED reads (see
# src/TessaneRename/AppUpdater.h for the format), with an Ed25519 secret key that is kept outside
# the repository and never committed:
#   bash scripts/sign-feed.sh --new-key SECRET.pem      makes a key pair and prints the public key,
#                                                       for -DTESSANE_UPDATE_PUBLIC_KEY=...
#   bash scripts/sign-feed.sh --public-key SECRET.pem   prints the public key again
#   bash scripts/sign-feed.sh SECRET.pem FEED.json      prints the signed envelope to publish
# FEED.json is the feed itself: {"version": "0.2.0", "date": "...", "notes": "...", "url": "..."}.
set -euo pipefail

usage() {
  sed -n '2,9p' "$0" | sed 's/^# \{0,1\}//' >&2
  exit 2
}

command -v openssl >/dev/null || {
  echo "sign-feed.sh needs openssl" >&2
  exit 1
}

public_key() {
  # The DER form of an Ed25519 public key ends with its 32 bytes.
  openssl pkey -in "$1" -pubout -outform DER | tail -c 32 | base64 -w0
  echo
}

# A secret key inside a git work tree could end up in a commit.
outside_repository() {
  local folder
  folder="$(cd "$(dirname "$1")" && pwd)"
  if git -C "$folder" rev-parse --is-inside-work-tree >/dev/null 2>&1; then
    echo "refusing $1: keep the secret key outside any git work tree" >&2
    exit 1
  fi
}

case "${1:-}" in
  --new-key)
    [ $# -eq 2 ] || usage
    outside_repository "$2"
    [ ! -e "$2" ] || {
      echo "$2 exists: not replaced" >&2
      exit 1
    }
    (umask 077 && openssl genpkey -algorithm ed25519 -out "$2")
    public_key "$2"
    ;;
  --public-key)
    [ $# -eq 2 ] || usage
    public_key "$2"
    ;;
  -* | "")
    usage
    ;;
  *)
    [ $# -eq 2 ] || usage
    key="$1" feed="$2"
    signature="$(openssl pkeyutl -sign -rawin -inkey "$key" -in "$feed" | base64 -w0)"
    printf '{"feed": "%s", "signature": "%s"}\n' "$(base64 -w0 "$feed")" "$signature"
    ;;
esac
