// Where the page finds its parts. A page of one file has them inside it: one_file.py puts another
// module in the place of this one.

/** The library as WebAssembly; undefined where it lies beside its own JavaScript. */
export const wasm = undefined;

/** The audio worklet of the preview; undefined likewise. */
export const processorUrl = undefined;

export function startWorker() {
  return new Worker(new URL('./loopWorker.js', import.meta.url), { type: 'module' });
}

/** @returns {Promise<Blob>} a demo loop */
export async function readDemo(name) {
  const response = await fetch(new URL(`../Demo/${name}`, import.meta.url));
  if (!response.ok) {
    throw Object.assign(new Error(`${response.status} ${name}`), { name: 'NotFoundError' });
  }
  return response.blob();
}
