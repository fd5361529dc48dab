#!/usr/bin/env python3
"""Makes keys for licences and signs licences. Needs the openssl command, 3.0 or later.

  sign_licence.py keys signing.pem
      makes a private key, which stays with whoever sells licences, and prints the public key that
      the program is built with: cmake ... -DORV_LICENCE_KEY=...
  sign_licence.py sign --key signing.pem --licensee "Studio" --features camera,vehicle \\
      --until 2027-12-31 --id 2026-0017 -o licence.txt
      writes a licence. Features: camera, firepower, links, rail, tracks, vehicle; or all.
"""
import argparse
import base64
import datetime
import hashlib
import os
import re
import subprocess
import sys
import tempfile


def fail(text):
    sys.exit(f"sign_licence.py: {text}")


def openssl(*arguments):
    try:
        run = subprocess.run(["openssl", *arguments], capture_output=True)
    except OSError as error:
        fail(f"the openssl command can't be run: {error} (install OpenSSL)")
    if run.returncode:
        fail(f"openssl {arguments[0]}: {run.stderr.decode(errors='replace').strip()}")
    return run.stdout


def public_key(path):
    """The 32 bytes of the public key that belongs to a private key's file."""
    der = openssl("pkey", "-in", path, "-pubout", "-outform", "DER")
    if len(der) != 44 or der[:12] != bytes.fromhex("302a300506032b6570032100"):
        fail(f"{path}: it is no Ed25519 key")
    return der[12:]


def make_keys(args):
    pem = openssl("genpkey", "-algorithm", "ed25519")
    try:
        with os.fdopen(os.open(args.path, os.O_WRONLY | os.O_CREAT | os.O_EXCL, 0o600), "wb") as out:
            out.write(pem)
    except OSError as error:
        fail(f"{args.path}: {error.strerror} (a key is never written over; name another file)")
    print(base64.b64encode(public_key(args.path)).decode())


def line_text(name, text):
    text = text.strip()
    if not text or any(ord(c) < 32 or c in "\x7f\x85\u2028\u2029" for c in text):
        fail(f"--{name}: it must be one line of text")
    return text


def sign(args):
    features = [f.strip() for f in args.features.split(",") if f.strip()]
    if not features or any(not re.fullmatch(r"[a-z0-9-]+", f) for f in features):
        fail(f"--features {args.features}: write names such as camera,vehicle")
    try:
        until = datetime.date.fromisoformat(args.until).isoformat()
    except ValueError:
        fail(f"--until {args.until}: it is no day such as 2027-12-31")
    lines = [f"licensee: {line_text('licensee', args.licensee)}",
             f"features: {', '.join(features)}",
             f"valid until: {until}",
             f"id: {line_text('id', args.id)}",
             f"key: {hashlib.sha256(public_key(args.key)).hexdigest()[:16]}"]
    # Blanks at the ends of a line are not signed; nor are they written.
    text = "".join(line + "\n" for line in lines)
    with tempfile.NamedTemporaryFile() as message:
        message.write(text.encode())
        message.flush()
        signature = openssl("pkeyutl", "-sign", "-rawin", "-inkey", args.key, "-in", message.name)
    text += f"signature: {base64.b64encode(signature).decode()}\n"
    partial = f"{args.output}.partial"
    try:
        with open(partial, "w", encoding="utf-8", newline="\n") as out:
            out.write(text)
        os.replace(partial, args.output)
    except OSError as error:
        fail(f"{args.output}: {error.strerror}")


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    verbs = parser.add_subparsers(dest="verb", required=True)
    keys = verbs.add_parser("keys", help="make a private key and print its public key")
    keys.add_argument("path", help="file of the private key, which must not exist yet")
    keys.set_defaults(run=make_keys)
    licence = verbs.add_parser("sign", help="write a licence")
    for name in ("key", "licensee", "features", "until", "id"):
        licence.add_argument(f"--{name}", required=True)
    licence.add_argument("-o", "--output", required=True)
    licence.set_defaults(run=sign)
    args = parser.parse_args()
    args.run(args)


if __name__ == "__main__":
    main()
