// For the compiler alone: the names that the module takes from JavaScript, so that any other name that
// nothing defines stays an error. instance.js gives the real ones.
mergeInto(LibraryManager.library, { reportProgress: () => 0 });
