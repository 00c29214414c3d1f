// One for all comparisons: localeCompare makes another each time, which takes seconds for a large folder.
const collator = new Intl.Collator(undefined, { numeric: true });

/** The order of names as people count: "loop 2" before "loop 10". */
export const compareNames = collator.compare;
