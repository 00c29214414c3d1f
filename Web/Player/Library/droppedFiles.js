// Files as they arrive: dropped, folders among them, or chosen in a dialog. Each is yielded as
// {file, path, isChosen}; `isChosen` tells a file that the person named from one that a folder held. What
// the system does not let be read is {path, isChosen, failure}.

import { compareNames } from './names.js';

const kOpenAhead = 32;
// Of so many items, those whose names say that they are loops are taken for files: asked whether one is a
// folder, the browser takes milliseconds, and the page stands still.
const kManyItems = 200;
const kLoopName = /\.(lop2|tsl|lop)$/i;

/**
 * Of a drop event. Call it in the event's handler: the list of dropped items is empty later.
 *
 * @param {DataTransfer} transfer
 */
export function droppedFiles(transfer) {
  const items = [...transfer.items].filter((item) => item.kind === 'file');
  const entries = items.map((item) => {
    const file = items.length > kManyItems ? item.getAsFile() : null;
    return kLoopName.test(file?.name) ? file : item.webkitGetAsEntry?.() ?? item.getAsFile();
  });
  return walk(entries.filter(Boolean));
}

/** Of an <input type="file">, with or without webkitdirectory. @param {FileList} files */
export async function* pickedFiles(files) {
  for (const file of files) {
    const path = file.webkitRelativePath || file.name;
    if (!isHidden(path)) {
      yield { file, path, isChosen: !file.webkitRelativePath };
    }
  }
}

async function* walk(items) {
  for (const item of items) {
    if (item instanceof File) {
      yield { file: item, path: item.name, isChosen: true };
    } else {
      yield* walkEntry(item, true);
    }
  }
}

async function* walkEntry(entry, isChosen) {
  if (entry.isFile) {
    yield openEntry(entry, isChosen);
    return;
  }
  const reader = entry.createReader();
  // A call gives some of the entries, and an empty list at the end.
  for (;;) {
    const some = await call(reader, 'readEntries').catch((failure) => ({ failure }));
    if (some.failure) {
      yield { path: pathOf(entry), isChosen: true, failure: some.failure };
      return;
    }
    if (some.length === 0) {
      return;
    }
    const inner = some.filter((item) => item.isDirectory || !isHidden(pathOf(item)))
      .sort((a, b) => compareNames(a.name, b.name));
    const opened = [];
    for (const [index, item] of inner.entries()) {
      // A file takes the browser milliseconds to open, and many take hardly longer.
      for (let ahead = opened.length; ahead < Math.min(index + kOpenAhead, inner.length); ++ahead) {
        opened.push(inner[ahead].isFile ? openEntry(inner[ahead], false) : null);
      }
      if (item.isFile) {
        yield opened[index];
      } else {
        yield* walkEntry(item, false);
      }
    }
  }
}

function openEntry(entry, isChosen) {
  const path = pathOf(entry);
  return call(entry, 'file').then(
    (file) => ({ file, path, isChosen }), (failure) => ({ path, isChosen, failure }));
}

function pathOf(entry) {
  return entry.fullPath.replace(/^\//, '');
}

function call(object, method) {
  return new Promise((resolve, reject) => object[method](resolve, reject));
}

// What systems leave in folders beside a person's files.
function isHidden(path) {
  return path.split('/').some((name) => name.startsWith('.'));
}
