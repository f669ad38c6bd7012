/*
 * The interface between Velorin and its add-in modules: one record that the program fills and one function that a
 * module offers. Plain C, and stable: fields are only ever added at the end of the record, `size` tells how many there
 * are.
 *
 * A module is a shared library with a manifest beside it (see README.md). Nothing of it runs before the user installs
 * it and chooses it from the menu.
 */
#ifndef VELORIN_ADDIN_H
#define VELORIN_ADDIN_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Goes into the manifest as "interface". The program runs modules of this number and of smaller ones. */
#define VELORIN_ADDIN_INTERFACE 1

/* What `selected` holds. */
enum { VELORIN_SELECTED_NOTHING = 0, VELORIN_SELECTED_NODES = 1, VELORIN_SELECTED_ELEMENTS = 2 };

/*
 * All that a module is told. Everything belongs to the program, is only good until the function returns, and must not
 * be changed, but for the text behind `error`.
 */
typedef struct velorin_addin_call {
    uint32_t size;              /* of this record in bytes, as the program knows it */
    uint32_t interface_version; /* of the program */

    /* The name of the open result file, as bytes for the system's calls, UTF-8 on most systems. "" when none is open.
     */
    const char* file_name;
    /* The open result file, for reading alone, with a position of its own: it may be moved and must not be closed.
     * -1 when none is open. `velorin_file_open` reads it. */
    int32_t file_handle;
    int32_t current_step; /* what the window shows, from 0; -1 for none; likewise the item */
    int32_t current_item;
    int32_t selected_count;
    const int32_t* selected; /* indexes of nodes or elements, from 0: what the window calls node 1 is 0 here */
    int32_t selected_kind;

    /* Where a module that has failed writes why, in UTF-8, within `error_size` bytes with the terminating zero; line
     * feeds are welcome. It is "" before the call. The program shows what stands there afterwards. */
    char* error;
    uint32_t error_size;
} velorin_addin_call;

#if defined(_WIN32)
#define VELORIN_ADDIN_EXPORT __declspec(dllexport)
#else
#define VELORIN_ADDIN_EXPORT __attribute__((visibility("default")))
#endif

/*
 * What a module has to define. The program calls it on a thread of its own, never twice at a time, and waits: its
 * window paints but takes no input meanwhile. Afterwards the library is unloaded, so no thread, signal handler or exit
 * procedure of the module may outlive the call. Each call meets the library freshly loaded.
 */
VELORIN_ADDIN_EXPORT void velorin_addin_run(const velorin_addin_call* call);

#ifdef __cplusplus
}
#endif

#endif
