import { readDemo } from './parts.js';

const kDemos = ['drums.lop2', 'night-bus.lop2'];

/** The demo loops as if a person had dropped them. */
export async function* demoFiles() {
  for (const name of kDemos) {
    yield { file: new File([await readDemo(name)], name), path: name, isChosen: true };
  }
}
