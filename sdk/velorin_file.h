/*
 * Reads result files (.vrf) through an open handle: mesh, names, and the values of any step. Says nothing about what
 * values mean, and never writes.
 *
 * Plain C for POSIX systems. A damaged or hostile file is refused or read as zeros where it is cut off; no memory is
 * asked for that its size does not vouch for. Indexes count from 0. An open file is never changed, so that all
 * functions but opening and closing may be called from several threads at once.
 */
#ifndef VELORIN_FILE_H
#define VELORIN_FILE_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct velorin_file velorin_file;

enum velorin_file_problem {
    VELORIN_FILE_GOOD = 0,
    VELORIN_FILE_UNREADABLE, /* the handle can't be read, or is no regular file */
    VELORIN_FILE_OTHER,      /* not a result file, cut off within its mesh, or without items, nodes or elements */
    VELORIN_FILE_NO_MEMORY
};

/*
 * Reads the mesh and finds the steps; their values are read when they are asked for. The handle stays the caller's and
 * must stay open until the file is closed; its position is neither used nor moved. Null when it fails; `problem`, which
 * may be null, tells why.
 */
velorin_file* velorin_file_open(int handle, enum velorin_file_problem* problem);
void velorin_file_close(velorin_file* file); /* null is allowed */

int32_t velorin_file_version(const velorin_file* file); /* times 100 */
int32_t velorin_file_item_count(const velorin_file* file);
int32_t velorin_file_node_count(const velorin_file* file);
int32_t velorin_file_element_count(const velorin_file* file);
int32_t velorin_file_step_count(const velorin_file* file);

/*
 * Names are bytes of code page 932 with a terminating zero, "" where the file has none, and belong to the file.
 * Functions that take an index answer "" or 0 for one that there isn't.
 */
const char* velorin_file_title(const velorin_file* file);
const char* velorin_file_item_name(const velorin_file* file, int32_t item);
const char* velorin_file_step_name(const velorin_file* file, int32_t step);

/*
 * Writes a name in UTF-8 to `text`, at most `size` bytes with the terminating zero, cut before a character that does
 * not fit. What the code page does not have becomes U+FFFD. Returns the length written.
 */
size_t velorin_file_utf8(const char* name, char* text, size_t size);

/* Negative: the item has a value per node. Otherwise one per element that has this type in the step. */
int32_t velorin_file_item_type(const velorin_file* file, int32_t item);
/* Bit 0: displacement along X; bit 1: along Y. */
int32_t velorin_file_item_flags(const velorin_file* file, int32_t item);

/* X and Y of all nodes in turn, in the file's own units; they belong to the file. */
const double* velorin_file_coordinates(const velorin_file* file);
/*
 * The number of an element's nodes, and the nodes in `*nodes`, in order around it; they belong to the file. A missing
 * node is -1, and an index may be of a node that there isn't.
 */
int32_t velorin_file_element(const velorin_file* file, int32_t element, const int32_t** nodes);

double velorin_file_step_time(const velorin_file* file, int32_t step);
/* Fills `types` with the types of `count` elements from `first` on; a negative one does not exist in this step. */
void velorin_file_types(const velorin_file* file, int32_t step, int32_t first, int32_t count, int32_t* types);
/* How many values a step has of an item, as the file tells; below 1 there are none. */
int32_t velorin_file_value_count(const velorin_file* file, int32_t step, int32_t item);
/* Fills `values` with `count` of them from position `first` on: per node, or packed per element of the item's type. */
void velorin_file_values(const velorin_file* file, int32_t step, int32_t item, int32_t first, int32_t count,
                         double* values);
/*
 * The values of `count` nodes or elements, whichever the item has its values for: `known[i]` is 0 and `values[i]` 0 for
 * one that has none in this step. 0 when memory is short, else 1. Element items cost a read of the step's types.
 */
int velorin_file_values_of(const velorin_file* file, int32_t step, int32_t item, int32_t count, const int32_t* objects,
                           double* values, char* known);

#ifdef __cplusplus
}
#endif

#endif
