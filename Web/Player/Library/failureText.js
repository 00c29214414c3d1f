const kReasons = {
  NotALoop: 'is not a loop file.',
  FileCorrupt: 'is not a loop file, or it is damaged.',
  FileTooNew: 'was written in a newer version of the format, which this page cannot read.',
  ZeroLoopLength: 'states a musical length of zero, so there is no tempo to play it at.',
  OutOfMemory: 'needs more memory than the browser gives.',
  RangeError: 'needs more memory than the browser gives.',
  TooLarge: 'is larger than the 2 GB that a loop file can have.',
  TooManySlices: 'has more slices than MIDI has keys and channels.',
  NotReadableError: 'could not be read. It may be in use or out of your reach.',
  NotFoundError: 'is no longer where it was.',
  NoAudioWorklet: 'cannot sound here: browsers play only on pages that come by https or from this'
    + ' machine.',
  NoSound: 'cannot be heard: the browser does not let this page sound.',
  NoWorker: 'could not be opened: this browser does not run what the page needs.',
};

/** One sentence on why a file could not be used, for the person who dropped it. */
export function failureText(fileName, failure) {
  const reason = kReasons[failure.name] ?? `could not be opened (${failure.message}).`;
  // Isolated, so that no sign in a name turns the sentence behind it around.
  return `“\u2068${fileName}\u2069” ${reason}`;
}
