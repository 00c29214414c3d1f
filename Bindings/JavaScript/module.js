import { Instance } from './instance.js';

// What init found: the module's bytes, which an audio worklet is given, and the module itself.
let given = {};
let compiling = null;
let shared = null;

export function init(options = {}) {
  compiling ??= compile(options).catch((error) => {
    compiling = null; // another try may have more luck with the network
    throw error;
  });
  return compiling;
}

async function compile({ wasm }) {
  if (wasm instanceof WebAssembly.Module) {
    given = { module: wasm };
  } else {
    const bytes = wasm === undefined || wasm instanceof URL || typeof wasm === 'string'
      ? await fetchBytes(wasm ?? new URL('./looplibrary.wasm', import.meta.url))
      : wasm;
    given = { bytes, module: await WebAssembly.compile(bytes) };
  }
  share();
}

function share() {
  const instance = new Instance(given.module, () => {
    if (shared === instance) {
      shared = null;
    }
  });
  shared = instance;
}

/** The instance that new loops of this thread share. */
export async function getInstance() {
  await init();
  if (shared === null) {
    share();
  }
  return shared;
}

export async function makeInstance() {
  await init();
  return new Instance(given.module);
}

/** The module's bytes; a host that gave a compiled module has them fetched from beside this file. */
export async function getModuleBytes() {
  await init();
  given.bytes ??= await fetchBytes(new URL('./looplibrary.wasm', import.meta.url));
  return given.bytes;
}

async function fetchBytes(location) {
  const url = new URL(location, import.meta.url);
  if (url.protocol === 'file:' && typeof process !== 'undefined') {
    // By a name that bundlers for browsers do not follow.
    const files = 'node:fs/promises';
    const { readFile } = await import(/* webpackIgnore: true */ /* @vite-ignore */ files);
    return readFile(url);
  }
  const response = await fetch(url);
  if (!response.ok) {
    throw new Error(`${url}: ${response.status} ${response.statusText}`);
  }
  return response.arrayBuffer();
}
