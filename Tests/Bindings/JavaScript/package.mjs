// The built package and the loop files that WriteLoops wrote, for the tests: LOOP_PACKAGE and
// LOOP_FILES are their folders.
import { readFileSync, readdirSync } from 'node:fs';
import { join } from 'node:path';
import { pathToFileURL } from 'node:url';

const packageFolder = process.env.LOOP_PACKAGE;
const filesFolder = process.env.LOOP_FILES;

export const packageFile = (name) => pathToFileURL(join(packageFolder, name));
export const { LoopLibrary, LoopError, createPreviewNode, ...constants } =
  await import(packageFile('index.js'));
export const { getInstance } = await import(packageFile('module.js'));

export const readLoop = (name) => new Uint8Array(readFileSync(join(filesFolder, name)));

/** The loops that sound the same on every system, each with its output rate, in the order of the hash. */
export const listenings = readdirSync(filesFolder)
  .filter((name) => name.endsWith('.loop'))
  .sort()
  .map((name) => ({ name, bytes: readLoop(name), rate: Number(/-(\d+)\./.exec(name)[1]) }));

/** For assert.throws and assert.rejects. */
export const failsWith = (resultName) => (error) =>
  error instanceof LoopError && error.resultName === resultName && error.message.length > 5;
