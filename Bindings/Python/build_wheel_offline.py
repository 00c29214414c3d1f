"""The build backend of `pip install .`: writes a wheel of the package's files with the standard
library alone, so that an installation needs no network. The wheel is the same for the same files."""

import base64
import hashlib
import os
import re
import zipfile

HERE = os.path.dirname(os.path.abspath(__file__))


def _field(name):
    with open(os.path.join(HERE, "pyproject.toml"), encoding="utf-8") as file:
        return re.search(rf'^{name} = "(.*)"$', file.read(), re.MULTILINE).group(1)


def _metadata():
    return (
        "Metadata-Version: 2.1\n"
        f"Name: {_field('name')}\nVersion: {_field('version')}\n"
        f"Summary: {_field('description')}\nRequires-Python: {_field('requires-python')}\n"
    )


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    name, version = _field("name"), _field("version")
    info = f"{name}-{version}.dist-info"
    files = {}
    package = os.path.join(HERE, name)
    for entry in sorted(os.listdir(package)):
        if entry.endswith((".py", ".typed", ".so.1", ".dll")):
            with open(os.path.join(package, entry), "rb") as file:
                files[f"{name}/{entry}"] = file.read()
    files[f"{info}/METADATA"] = _metadata().encode()
    files[f"{info}/WHEEL"] = (
        b"Wheel-Version: 1.0\nGenerator: looplibrary\nRoot-Is-Purelib: true\nTag: py3-none-any\n"
    )
    record = ""
    for path, data in files.items():
        digest = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
        record += f"{path},sha256={digest},{len(data)}\n"
    files[f"{info}/RECORD"] = (record + f"{info}/RECORD,,\n").encode()

    wheel = f"{name}-{version}-py3-none-any.whl"
    with zipfile.ZipFile(os.path.join(wheel_directory, wheel), "w") as archive:
        for path, data in files.items():
            entry = zipfile.ZipInfo(path, (1980, 1, 1, 0, 0, 0))
            entry.external_attr = 0o644 << 16
            archive.writestr(entry, data)
    return wheel


def build_sdist(sdist_directory, config_settings=None):
    raise NotImplementedError("build the wheel")
