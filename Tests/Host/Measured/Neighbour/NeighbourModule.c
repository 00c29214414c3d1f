/* A module with 32 bytes of thread-local storage, as libraries of a host's process have them. Built
 * with storage of either kind: from the room that every thread has from its start, or from the
 * heap. */

int* TouchThreadStorage(void);

#if defined(STATIC_STORAGE)
static __thread int gBlock[8] __attribute__((tls_model("initial-exec")));
#else
static __thread int gBlock[8] __attribute__((tls_model("global-dynamic")));
#endif

int* TouchThreadStorage(void) {
    return gBlock;
}
