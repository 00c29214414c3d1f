#!/usr/bin/env python3
"""Writes the player page as one HTML file, which opens from a disk without a server.

usage: one_file.py PAGE OUT.html

PAGE is the folder that scripts/page made. Scripts become classic ones by esbuild, since browsers load no
modules from a disk; the worker, the audio worklet, the library and the demo loops stand inside the file.
"""

import base64
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

# In the place of Library/parts.js.
PARTS = """
const bytesOf = (text) => Uint8Array.from(atob(text), (letter) => letter.charCodeAt(0));
// Worklets of a page from a disk load no blobs, and workers no data.
const dataUrl = (text) => `data:text/javascript;charset=utf-8,${{encodeURIComponent(text)}}`;
const blobUrl = (text) => URL.createObjectURL(new Blob([text], {{ type: 'text/javascript' }}));
const demos = {{ {demos} }};
export const wasm = bytesOf('{wasm}').buffer;
export const processorUrl = dataUrl({processor});
export const startWorker = () => new Worker(blobUrl({worker}));
export const readDemo = async (name) => new Blob([bytesOf(demos[name])]);
"""
# Nothing but the file itself, and what it makes of its own parts.
POLICY = (
    "default-src 'none'; script-src 'unsafe-inline' 'wasm-unsafe-eval' blob: data:; style-src 'unsafe-inline'; "
    "img-src data:; worker-src blob:; base-uri 'none'; form-action 'none'"
)


def bundle(script):
    """A module and all that it imports as one classic script."""
    return subprocess.run(
        ["esbuild", str(script), "--bundle", "--format=iife", "--minify", "--charset=utf8",
         "--target=es2022", '--define:import.meta.url=""', "--log-level=error"],
        check=True, stdout=subprocess.PIPE, text=True).stdout


def literal(text):
    """A JavaScript string that may stand in a script element."""
    escaped = text.replace("\\", "\\\\").replace("`", "\\`").replace("${", "\\${")
    return "`" + escaped + "`"


def encoded(path):
    return base64.b64encode(path.read_bytes()).decode("ascii")


def inline(page, html, script):
    """The page with its styles, its icon and `script` inside it."""
    styles = [page / name for name in re.findall(r'<link rel="stylesheet" href="([^"]+)">', html)]
    style = "".join(path.read_text(encoding="utf-8") for path in styles)
    html = re.sub(r'<link rel="stylesheet"[^>]*>\n', "", html)
    html = re.sub(r'(http-equiv="Content-Security-Policy" content=)"[^"]*"',
                  lambda match: f'{match[1]}"{POLICY}"', html)
    html = html.replace('"icon.svg"', f'"data:image/svg+xml;base64,{encoded(page / "icon.svg")}"')
    html = html.replace('<script type="module" src="main.js"></script>', f"<style>\n{style}</style>")
    # A classic script runs where it stands, so it stands behind what it looks for.
    return html.replace("</body>", "<script>" + script.replace("</script", "<\\/script") + "</script>\n</body>")


def main(page, out):
    page = pathlib.Path(page)
    with tempfile.TemporaryDirectory() as folder:
        copy = pathlib.Path(folder) / "page"
        shutil.copytree(page, copy)
        demos = ", ".join(f"'{path.name}': '{encoded(path)}'" for path in sorted((copy / "Demo").iterdir()))
        (copy / "Library/parts.js").write_text(PARTS.format(
            demos=demos,
            wasm=encoded(copy / "looplibrary/looplibrary.wasm"),
            processor=literal(bundle(copy / "looplibrary/preview-processor.js")),
            worker=literal(bundle(copy / "Library/loopWorker.js"))), encoding="utf-8")
        script = bundle(copy / "main.js")
    html = (page / "index.html").read_text(encoding="utf-8")
    pathlib.Path(out).write_text(inline(page, html, script), encoding="utf-8")


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
