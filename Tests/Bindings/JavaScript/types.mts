// Compiled and never run: what a program in TypeScript may write, and what it may not.
import { LoopError, LoopLibrary, PPQ, createPreviewNode } from 'looplibrary';
import type { Loop, LoopInfo, PreviewImage, PreviewNode } from 'looplibrary';

export async function use(bytes: Uint8Array, context: AudioContext): Promise<number> {
  await LoopLibrary.init({ wasm: new URL('https://example.org/looplibrary.wasm') });
  const loop: Loop = await LoopLibrary.load(bytes, { sampleRate: 48000, onProgress: (percent) => percent < 50 });
  const info: LoopInfo = await LoopLibrary.readInfo(bytes.buffer as ArrayBuffer);
  const [numerator, denominator]: readonly [number, number] = info.timeSignature;
  const planes: Float32Array[] = loop.renderSlice(0, 44100);
  const [left, right] = loop.renderPreview(64);
  loop.renderPreviewInto(left, right);
  const first: string | undefined = loop.creatorTexts?.[0];
  const image: PreviewImage = await LoopLibrary.preparePreview(bytes, context.sampleRate);
  const preview: PreviewNode = await createPreviewNode(context, image, { processorUrl: '/processor.js' });
  preview.connect(context.destination);
  preview.tempo.linearRampToValueAtTime(140, context.currentTime + 2);
  await preview.load(bytes, { keepTempo: true });
  try {
    loop.close();
  } catch (error) {
    if (error instanceof LoopError && error.resultName === 'InvalidHandle') {
      return error.result;
    }
  }
  // @ts-expect-error: files are given as bytes
  await LoopLibrary.load('drums.lop2');
  // @ts-expect-error: the records are what the library found
  info.loopTempo = 120;
  // @ts-expect-error: no such result
  const wrong: LoopError['resultName'] = 'Corrupt';
  return planes.length + numerator * denominator + PPQ + (first ?? wrong).length;
}
