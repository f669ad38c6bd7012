/*
 * Results of calculations for other programs, by the engine of Velorin: opens every result file that the program opens,
 * gives mesh and values, draws pictures, and writes result files (.vrf). Library velorin, C with an interface that
 * stays. It shows no window and needs no display.
 *
 * Steps, items, nodes and elements count from 0. Texts are UTF-8; names of files are bytes. Functions that return `int`
 * give VELORIN_GOOD or what went wrong, of which velorin_error tells more. An open result is never changed, so that all
 * functions but velorin_close may be called from several threads at once; pictures are painted one at a time.
 */
#ifndef VELORIN_H
#define VELORIN_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define VELORIN_INTERFACE 1

enum velorin_problem {
    VELORIN_GOOD = 0,
    VELORIN_UNREADABLE,  /* there is no such file, or it can't be read */
    VELORIN_OTHER,       /* the file is not a result that can be used */
    VELORIN_WRONG,       /* an argument that can't be */
    VELORIN_NOT_WRITTEN, /* the file can't be written; what was there is as it was */
    VELORIN_STOPPED,     /* a function of the caller has said so */
    VELORIN_NO_MEMORY,
    VELORIN_FAILED /* anything else */
};

typedef struct velorin_result velorin_result;

/* Told how much is done, of a total in the same unit, on the thread of the call or another; 0 stops. May be null. */
typedef int (*velorin_progress)(void* context, int64_t done, int64_t total);

int32_t velorin_interface(void);

/* What went wrong in the last call on this thread that failed. Valid until the next one. */
const char* velorin_error(void);

/* Reads the mesh and finds the steps; their values are read when they are asked for. */
int velorin_open(const char* path, velorin_progress progress, void* context, velorin_result** result);
void velorin_close(velorin_result* result); /* null is allowed */

/* What a result holds belongs to it. An index without an object gives "" or 0. */
const char* velorin_title(const velorin_result* result);
int32_t velorin_node_count(const velorin_result* result);
int32_t velorin_element_count(const velorin_result* result);
int32_t velorin_item_count(const velorin_result* result);
int32_t velorin_step_count(const velorin_result* result);
const float* velorin_node_x(const velorin_result* result);
const float* velorin_node_y(const velorin_result* result);
/*
 * The nodes of element e, in order around it, are those from starts[e] up to before starts[e + 1] of the list of nodes.
 * -1 is a missing node, and an index may be of a node that there isn't.
 */
const int32_t* velorin_element_starts(const velorin_result* result);
const int32_t* velorin_element_nodes(const velorin_result* result);
const char* velorin_item_name(const velorin_result* result, int32_t item);
/* Negative: the item has a value per node. Otherwise one per element that has this type in the step. */
int32_t velorin_item_type(const velorin_result* result, int32_t item);
/* Bit 0: displacement along X; bit 1: along Y. */
int32_t velorin_item_flags(const velorin_result* result, int32_t item);
const char* velorin_step_name(const velorin_result* result, int32_t step);
float velorin_step_time(const velorin_result* result, int32_t step);

/* Fills `types` with the type of each element in a step; a negative one does not exist there. */
int velorin_types(const velorin_result* result, int32_t step, int32_t* types);
/* Fills `values` with one for each node or each element, whichever the item has; not a number where there is none. */
int velorin_values(const velorin_result* result, int32_t step, int32_t item, float* values);
/* Likewise those of `count` nodes or elements in each step, step by step, without reading what is not asked for. */
int velorin_history(const velorin_result* result, int32_t item, int32_t count, const int32_t* objects,
                    velorin_progress progress, void* context, float* values);

/* A picture of one step. Zeros are what velorin-batch draws without options. */
typedef struct velorin_picture {
    size_t size; /* sizeof(velorin_picture) */
    int32_t step, item;
    int32_t width, height;       /* in pixels; 0: 1280 and 1024 */
    int32_t dots_per_inch;       /* 0: 96 */
    int32_t zoom;                /* from -7 to 9 */
    int32_t fixed_scale;         /* not 0: the scale does not follow the size */
    int32_t no_mesh;             /* not 0: the outline in place of all edges */
    int32_t no_property_file;    /* not 0: the drawing settings beside the file are left unread */
    const char* const* settings; /* drawing settings "PATH=VALUE", with a null at the end; null for none */
} velorin_picture;

/* The format is by the ending of the name: .png, .svg, .pdf or .trace. */
int velorin_render(const velorin_result* result, const velorin_picture* picture, const char* path);

typedef struct velorin_item {
    const char* name;
    int32_t type, flags; /* as velorin_item_type and velorin_item_flags tell them */
} velorin_item;

typedef struct velorin_step {
    const char* name; /* null or "": the time */
    double time;
} velorin_step;

/* A result to be written, in the form that reading gives. There is at least one node, one element and one item. */
typedef struct velorin_content {
    size_t size; /* sizeof(velorin_content) */
    const char* title;
    int32_t node_count, element_count, item_count, step_count;
    const float *x, *y;
    const int32_t *starts, *nodes;
    const velorin_item* items;
    const velorin_step* steps;
    /* Fill what velorin_types and velorin_values are to give of the file; 0 stops. Without `types` all are 0. */
    int (*types)(void* context, int32_t step, int32_t* types);
    int (*values)(void* context, int32_t step, int32_t item, float* values);
    void* context;
} velorin_content;

/* Wholly or not at all. */
int velorin_write(const char* path, const velorin_content* content);

#ifdef __cplusplus
}
#endif

#endif
