#!/usr/bin/env python3
"""Writes an SPDX bill of materials: what is in the packages named and what they are made with.

Usage: make_sbom.py VERSION OUTPUT PACKAGE-FILE...
The time is SOURCE_DATE_EPOCH, so that two runs over equal packages are equal.
"""
import hashlib
import json
import os
import re
import subprocess
import sys
import time

# Debian package -> how the product is made with it. What it runs with is read from the packages.
MATERIALS = {
    "libboost-dev": ("BUILD_DEPENDENCY_OF", "headers of shared_ptr, compiled into the library"),
    "libcli11-dev": ("BUILD_DEPENDENCY_OF", "headers, compiled into looptool"),
    "nlohmann-json3-dev": ("BUILD_DEPENDENCY_OF", "headers, compiled into looptool"),
    "lv2-dev": ("BUILD_DEPENDENCY_OF", "headers, compiled into the plug-in"),
    "g++": ("BUILD_TOOL_OF", "compiler for Linux"),
    "emscripten": ("BUILD_TOOL_OF", "compiler for WebAssembly, its C and C++ libraries linked in"),
    "g++-mingw-w64-x86-64-posix": ("BUILD_TOOL_OF", "compiler for Windows, its runtime linked in"),
}


def installed_version(package):
    found = subprocess.run(["dpkg-query", "-W", "-f=${Version}", package], stdout=subprocess.PIPE,
                           stderr=subprocess.DEVNULL, text=True, check=False)
    return found.stdout.strip()


def dependencies(path):
    """The names of the packages that a .deb file depends on; none for other files."""
    if not path.endswith(".deb"):
        return []
    field = subprocess.run(["dpkg-deb", "-f", path, "Depends"], stdout=subprocess.PIPE, text=True, check=True)
    return re.findall(r"(?:^|,)\s*([a-z0-9.+-]+)", field.stdout.strip())


def identifier(name):
    return "SPDXRef-" + "".join(c if c.isalnum() or c in ".-" else "-" for c in name)


def package(name, version, **more):
    return dict({"SPDXID": identifier(name), "name": name, "versionInfo": version,
                 "downloadLocation": "NOASSERTION", "filesAnalyzed": False,
                 "licenseConcluded": "NOASSERTION", "licenseDeclared": "NOASSERTION",
                 "copyrightText": "NOASSERTION"}, **more)


def main():
    version, output, files = sys.argv[1], sys.argv[2], sys.argv[3:]
    epoch = int(os.environ.get("SOURCE_DATE_EPOCH", "0"))
    product = identifier("LoopLibrary")
    packages = [package("LoopLibrary", version, supplier="Organization: Halyard Software",
                        comment="The owner has not chosen a licence yet.")]
    relations = [("SPDXRef-DOCUMENT", "DESCRIBES", product)]
    digest = hashlib.sha256()
    for path in sorted(files, key=os.path.basename):
        name = os.path.basename(path)
        with open(path, "rb") as file:
            checksum = hashlib.sha256(file.read()).hexdigest()
        digest.update(checksum.encode())
        packages.append(package(name, version, packageFileName=name, checksums=[
            {"algorithm": "SHA256", "checksumValue": checksum}]))
        relations.append((identifier(name), "PACKAGE_OF", product))
    for name, (relation, comment) in sorted(MATERIALS.items()):
        found = installed_version(name)
        if found:
            packages.append(package(name, found, supplier="Organization: Debian", comment=comment))
            relations.append((identifier(name), relation, product))
    own = {os.path.basename(path).split("_")[0]: identifier(os.path.basename(path)) for path in files}
    needed = {name for path in files for name in dependencies(path)} - own.keys()
    packages += [package(name, installed_version(name), supplier="Organization: Debian") for name in sorted(needed)]
    for path in sorted(files, key=os.path.basename):
        relations += [(own.get(name, identifier(name)), "RUNTIME_DEPENDENCY_OF", identifier(os.path.basename(path)))
                      for name in dependencies(path)]
    document = {
        "spdxVersion": "SPDX-2.3", "dataLicense": "CC0-1.0", "SPDXID": "SPDXRef-DOCUMENT",
        "name": "LoopLibrary-" + version,
        "documentNamespace": "https://halyard.example/spdx/LoopLibrary-%s-%s" % (
            version, digest.hexdigest()[:16]),
        "creationInfo": {
            "created": time.strftime("%Y-%m-%dT%H:%M:%SZ", time.gmtime(epoch)),
            "creators": ["Tool: make_sbom.py", "Organization: Halyard Software"]},
        "packages": packages,
        "relationships": [
            {"spdxElementId": a, "relationshipType": kind, "relatedSpdxElement": b}
            for a, kind, b in relations],
    }
    with open(output, "w", encoding="utf-8") as out:
        json.dump(document, out, indent=2)
        out.write("\n")


if __name__ == "__main__":
    main()
