#define _FILE_OFFSET_BITS 64
#define _POSIX_C_SOURCE 200809L
#include "velorin_file.h"

#include <errno.h>
#include <iconv.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

enum { TYPE_BYTES = 4, VALUE_BYTES = 8, NODE_BYTES = 16, LEAST_ITEM_BYTES = 12, LEAST_ELEMENT_BYTES = 4 };

struct item {
    size_t name; /* where it stands in `names`; likewise elsewhere */
    int32_t type, flags;
};

struct step {
    size_t name;
    double time;
    int64_t types; /* where they stand in the file */
};

struct block {
    int64_t values;
    int32_t count;
};

struct velorin_file {
    int handle;
    int64_t size;
    int32_t version, item_count, node_count, element_count, step_count;
    size_t title;
    char* names; /* all of them, each with its zero; the first is "" */
    size_t names_used, names_room;
    struct item* items;
    double* coordinates;
    int32_t *first_corner, *corners; /* element e has the corners from first_corner[e] up to first_corner[e + 1] */
    struct step* steps;
    size_t steps_room;
    struct block* blocks; /* of each step as many as there are items */
    size_t blocks_room;
};

/* Reading ------------------------------------------------------------------------------------------------------- */

/* As many bytes as the file has there. */
static size_t read_at(int handle, int64_t offset, void* target, size_t count) {
    size_t done = 0;
    while (done < count) {
        const ssize_t got = pread(handle, (char*)target + done, count - done, (off_t)(offset + (int64_t)done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            break;
        done += (size_t)got;
    }
    return done;
}

/* From front to back. A read that meets the end delivers nothing and leaves the position there. */
struct reader {
    int handle;
    int64_t size, position;
    int64_t start; /* of what stands in the buffer */
    size_t filled;
    unsigned char buffer[4096];
};

static int64_t remaining(const struct reader* reader) {
    return reader->size - reader->position;
}

static void skip(struct reader* reader, int64_t count) {
    if (count > 0)
        reader->position += count < remaining(reader) ? count : remaining(reader);
}

static int read_bytes(struct reader* reader, void* target, int64_t count) {
    const int64_t inside = reader->position - reader->start;
    if (count > remaining(reader)) {
        reader->position = reader->size;
        return 0;
    }
    if (inside < 0 || inside + count > (int64_t)reader->filled) {
        if (count > (int64_t)sizeof reader->buffer) {
            if (read_at(reader->handle, reader->position, target, (size_t)count) < (size_t)count) {
                reader->position = reader->size;
                return 0;
            }
            reader->position += count;
            return 1;
        }
        reader->start = reader->position;
        reader->filled = read_at(reader->handle, reader->position, reader->buffer, sizeof reader->buffer);
        if ((int64_t)reader->filled < count) {
            reader->position = reader->size;
            return 0;
        }
    }
    memcpy(target, reader->buffer + (reader->position - reader->start), (size_t)count);
    reader->position += count;
    return 1;
}

static uint64_t number_of(const unsigned char* bytes, int count) {
    uint64_t number = 0;
    while (count-- > 0)
        number = number << 8 | bytes[count];
    return number;
}

static int32_t int32_of(const unsigned char* bytes) {
    const uint32_t bits = (uint32_t)number_of(bytes, TYPE_BYTES);
    int32_t number;
    memcpy(&number, &bits, sizeof number);
    return number;
}

static double double_of(const unsigned char* bytes) {
    const uint64_t bits = number_of(bytes, VALUE_BYTES);
    double number;
    memcpy(&number, &bits, sizeof number);
    return number;
}

/* `number` stays as it is when there is none. */
static int read_int32(struct reader* reader, int32_t* number) {
    unsigned char bytes[TYPE_BYTES];
    if (!read_bytes(reader, bytes, sizeof bytes))
        return 0;
    *number = int32_of(bytes);
    return 1;
}

static int read_double(struct reader* reader, double* number) {
    unsigned char bytes[VALUE_BYTES];
    if (!read_bytes(reader, bytes, sizeof bytes))
        return 0;
    *number = double_of(bytes);
    return 1;
}

/* Opening ------------------------------------------------------------------------------------------------------- */

/* Room for `wanted` things of `bytes` each, at least twice what there was. */
static int grow(void** room, size_t* has, size_t wanted, size_t bytes) {
    if (wanted <= *has)
        return 1;
    const size_t next = wanted > 2 * *has ? wanted : 2 * *has;
    void* moved = next <= SIZE_MAX / bytes ? realloc(*room, next * bytes) : NULL;
    if (!moved)
        return 0;
    *room = moved;
    *has = next;
    return 1;
}

static int64_t how_many(int32_t count) {
    return count > 0 ? count : 0;
}

/* A name without bytes is the one at 0, "". */
static enum velorin_file_problem read_name(struct reader* reader, velorin_file* file, size_t* name) {
    int32_t length = 0;
    if (!read_int32(reader, &length))
        return VELORIN_FILE_OTHER;
    if (length < 1)
        return VELORIN_FILE_GOOD;
    if (length > remaining(reader))
        return VELORIN_FILE_OTHER;
    if (!grow((void**)&file->names, &file->names_room, file->names_used + (size_t)length + 1, 1))
        return VELORIN_FILE_NO_MEMORY;
    char* text = file->names + file->names_used;
    if (!read_bytes(reader, text, length))
        return VELORIN_FILE_OTHER;
    text[length] = 0;
    *name = file->names_used;
    file->names_used += (size_t)length + 1;
    return VELORIN_FILE_GOOD;
}

static enum velorin_file_problem read_header(struct reader* reader, velorin_file* file) {
    static const char magic[] = "vrf10";
    unsigned char start[sizeof magic - 1];
    if (!read_bytes(reader, start, sizeof start))
        return VELORIN_FILE_OTHER;
    for (size_t i = 0; i < sizeof start; ++i)
        if ((start[i] >= 'A' && start[i] <= 'Z' ? start[i] - 'A' + 'a' : start[i]) != magic[i])
            return VELORIN_FILE_OTHER;
    if (!grow((void**)&file->names, &file->names_room, 1, 1))
        return VELORIN_FILE_NO_MEMORY;
    file->names[0] = 0;
    file->names_used = 1;
    if (!read_int32(reader, &file->version))
        return VELORIN_FILE_OTHER;
    return read_name(reader, file, &file->title);
}

static enum velorin_file_problem read_items(struct reader* reader, velorin_file* file) {
    int32_t count = 0;
    if (!read_int32(reader, &count) || count < 1 || how_many(count) * LEAST_ITEM_BYTES > remaining(reader))
        return VELORIN_FILE_OTHER;
    file->items = calloc((size_t)count, sizeof *file->items);
    if (!file->items)
        return VELORIN_FILE_NO_MEMORY;
    for (file->item_count = 0; file->item_count < count; ++file->item_count) {
        struct item* item = &file->items[file->item_count];
        const enum velorin_file_problem problem = read_name(reader, file, &item->name);
        if (problem)
            return problem;
        if (!read_int32(reader, &item->type) || !read_int32(reader, &item->flags))
            return VELORIN_FILE_OTHER;
    }
    return VELORIN_FILE_GOOD;
}

static enum velorin_file_problem read_nodes(struct reader* reader, velorin_file* file) {
    if (!read_int32(reader, &file->node_count) || !read_int32(reader, &file->element_count) || file->node_count < 1 ||
        file->element_count < 1)
        return VELORIN_FILE_OTHER;
    if (how_many(file->node_count) * NODE_BYTES + how_many(file->element_count) * LEAST_ELEMENT_BYTES >
        remaining(reader))
        return VELORIN_FILE_OTHER;
    const size_t numbers = 2 * (size_t)file->node_count;
    file->coordinates = malloc(numbers * sizeof *file->coordinates);
    if (!file->coordinates)
        return VELORIN_FILE_NO_MEMORY;
    for (size_t i = 0; i < numbers; ++i)
        if (!read_double(reader, &file->coordinates[i]))
            return VELORIN_FILE_OTHER;
    return VELORIN_FILE_GOOD;
}

static enum velorin_file_problem read_elements(struct reader* reader, velorin_file* file) {
    size_t room = 0, used = 0;
    file->first_corner = malloc(((size_t)file->element_count + 1) * sizeof *file->first_corner);
    if (!file->first_corner || !grow((void**)&file->corners, &room, 1, sizeof *file->corners))
        return VELORIN_FILE_NO_MEMORY;
    file->first_corner[0] = 0;
    for (int32_t e = 0; e < file->element_count; ++e) {
        int32_t count = 0;
        if (!read_int32(reader, &count) || how_many(count) * TYPE_BYTES > remaining(reader))
            return VELORIN_FILE_OTHER;
        if (!grow((void**)&file->corners, &room, used + (size_t)how_many(count), sizeof *file->corners))
            return VELORIN_FILE_NO_MEMORY;
        for (int32_t i = 0; i < count; ++i) {
            int32_t number = 0;
            if (!read_int32(reader, &number))
                return VELORIN_FILE_OTHER;
            file->corners[used++] = number == INT32_MIN ? number : number - 1;
        }
        file->first_corner[e + 1] = (int32_t)used;
    }
    const int64_t reserved_bytes = 16;
    skip(reader, reserved_bytes);
    return VELORIN_FILE_GOOD;
}

/* A count that neither the mesh nor the rest of the file could hold counts as none. */
static void scan_block(struct reader* reader, const velorin_file* file, struct block* block) {
    const int32_t most = file->node_count > file->element_count ? file->node_count : file->element_count;
    int32_t told = 0;
    read_int32(reader, &told);
    block->values = reader->position;
    block->count = told > most && told > remaining(reader) / VALUE_BYTES ? 0 : told;
    skip(reader, (int64_t)told * VALUE_BYTES);
}

/* Steps go on to the end of the file; the last one may be cut off anywhere. */
static enum velorin_file_problem scan_steps(struct reader* reader, velorin_file* file) {
    while (remaining(reader) > 0) {
        const size_t next = (size_t)file->step_count, items = (size_t)file->item_count;
        if (!grow((void**)&file->steps, &file->steps_room, next + 1, sizeof *file->steps) ||
            !grow((void**)&file->blocks, &file->blocks_room, (next + 1) * items, sizeof *file->blocks))
            return VELORIN_FILE_NO_MEMORY;
        struct step step = {0, 0, 0};
        read_double(reader, &step.time);
        const enum velorin_file_problem problem = read_name(reader, file, &step.name);
        if (problem == VELORIN_FILE_NO_MEMORY)
            return problem;
        if (problem)
            skip(reader, remaining(reader));
        step.types = reader->position;
        skip(reader, (int64_t)file->element_count * TYPE_BYTES);
        for (size_t i = 0; i < items; ++i)
            scan_block(reader, file, &file->blocks[next * items + i]);
        file->steps[next] = step;
        ++file->step_count;
    }
    return VELORIN_FILE_GOOD;
}

static enum velorin_file_problem read_all(velorin_file* file) {
    struct reader reader = {file->handle, file->size, 0, 0, 0, {0}};
    enum velorin_file_problem (*const parts[])(struct reader*, velorin_file*) = {read_header, read_items, read_nodes,
                                                                                 read_elements, scan_steps};
    enum velorin_file_problem problem = VELORIN_FILE_GOOD;
    for (size_t i = 0; i < sizeof parts / sizeof *parts && !problem; ++i)
        problem = parts[i](&reader, file);
    return problem;
}

velorin_file* velorin_file_open(int handle, enum velorin_file_problem* problem) {
    enum velorin_file_problem ignored;
    struct stat about;
    velorin_file* file = NULL;
    if (!problem)
        problem = &ignored;
    if (fstat(handle, &about) != 0 || !S_ISREG(about.st_mode)) {
        *problem = VELORIN_FILE_UNREADABLE;
    } else if (about.st_size > INT32_MAX) {
        *problem = VELORIN_FILE_OTHER;
    } else if (!(file = calloc(1, sizeof *file))) {
        *problem = VELORIN_FILE_NO_MEMORY;
    } else {
        file->handle = handle;
        file->size = about.st_size;
        *problem = read_all(file);
        if (!*problem)
            return file;
    }
    velorin_file_close(file);
    return NULL;
}

void velorin_file_close(velorin_file* file) {
    if (!file)
        return;
    free(file->names);
    free(file->items);
    free(file->coordinates);
    free(file->first_corner);
    free(file->corners);
    free(file->steps);
    free(file->blocks);
    free(file);
}

/* Asking -------------------------------------------------------------------------------------------------------- */

int32_t velorin_file_version(const velorin_file* file) {
    return file->version;
}

int32_t velorin_file_item_count(const velorin_file* file) {
    return file->item_count;
}

int32_t velorin_file_node_count(const velorin_file* file) {
    return file->node_count;
}

int32_t velorin_file_element_count(const velorin_file* file) {
    return file->element_count;
}

int32_t velorin_file_step_count(const velorin_file* file) {
    return file->step_count;
}

static const struct item* item_at(const velorin_file* file, int32_t item) {
    static const struct item none = {0, 0, 0};
    return item >= 0 && item < file->item_count ? &file->items[item] : &none;
}

static int has_step(const velorin_file* file, int32_t step) {
    return step >= 0 && step < file->step_count;
}

const char* velorin_file_title(const velorin_file* file) {
    return file->names + file->title;
}

const char* velorin_file_item_name(const velorin_file* file, int32_t item) {
    return file->names + item_at(file, item)->name;
}

const char* velorin_file_step_name(const velorin_file* file, int32_t step) {
    return file->names + (has_step(file, step) ? file->steps[step].name : 0);
}

size_t velorin_file_utf8(const char* name, char* text, size_t size) {
    static const char stand_in[] = "\xEF\xBF\xBD";
    if (size == 0)
        return 0;
    char *from = (char*)name, *to = text; /* iconv asks for it and changes nothing there */
    size_t left = strlen(name), room = size - 1;
    const iconv_t converter = iconv_open("UTF-8", "CP932");
    while (left > 0 && converter != (iconv_t)-1) {
        if (iconv(converter, &from, &left, &to, &room) != (size_t)-1 || errno == E2BIG)
            break;
        if (room < sizeof stand_in - 1)
            break;
        memcpy(to, stand_in, sizeof stand_in - 1);
        to += sizeof stand_in - 1;
        room -= sizeof stand_in - 1;
        ++from;
        --left;
    }
    if (converter != (iconv_t)-1)
        iconv_close(converter);
    *to = 0;
    return (size_t)(to - text);
}

int32_t velorin_file_item_type(const velorin_file* file, int32_t item) {
    return item_at(file, item)->type;
}

int32_t velorin_file_item_flags(const velorin_file* file, int32_t item) {
    return item_at(file, item)->flags;
}

const double* velorin_file_coordinates(const velorin_file* file) {
    return file->coordinates;
}

int32_t velorin_file_element(const velorin_file* file, int32_t element, const int32_t** nodes) {
    *nodes = NULL;
    if (element < 0 || element >= file->element_count)
        return 0;
    *nodes = file->corners + file->first_corner[element];
    return file->first_corner[element + 1] - file->first_corner[element];
}

double velorin_file_step_time(const velorin_file* file, int32_t step) {
    return has_step(file, step) ? file->steps[step].time : 0;
}

/* How many of `count` things from `first` on there are among `all`. */
static int32_t inside(int32_t all, int32_t first, int32_t count) {
    if (first < 0 || first >= all || count < 1)
        return 0;
    return count < all - first ? count : all - first;
}

void velorin_file_types(const velorin_file* file, int32_t step, int32_t first, int32_t count, int32_t* types) {
    const int32_t wanted = has_step(file, step) ? inside(file->element_count, first, count) : 0;
    size_t got = 0;
    if (wanted > 0)
        got = read_at(file->handle, file->steps[step].types + (int64_t)first * TYPE_BYTES, types,
                      (size_t)wanted * TYPE_BYTES) /
              TYPE_BYTES;
    for (size_t i = 0; i < got; ++i)
        types[i] = int32_of((const unsigned char*)&types[i]);
    if (count > 0)
        memset(types + got, 0, ((size_t)count - got) * sizeof *types);
}

static const struct block* block_at(const velorin_file* file, int32_t step, int32_t item) {
    static const struct block none = {0, 0};
    return has_step(file, step) && item >= 0 && item < file->item_count
               ? &file->blocks[(size_t)step * (size_t)file->item_count + (size_t)item]
               : &none;
}

int32_t velorin_file_value_count(const velorin_file* file, int32_t step, int32_t item) {
    return block_at(file, step, item)->count;
}

void velorin_file_values(const velorin_file* file, int32_t step, int32_t item, int32_t first, int32_t count,
                         double* values) {
    const struct block* block = block_at(file, step, item);
    const int32_t wanted = inside(block->count, first, count);
    const size_t got =
        read_at(file->handle, block->values + (int64_t)first * VALUE_BYTES, values, (size_t)wanted * VALUE_BYTES) /
        VALUE_BYTES;
    for (size_t i = 0; i < got; ++i)
        values[i] = double_of((const unsigned char*)&values[i]);
    if (count > 0)
        memset(values + got, 0, ((size_t)count - got) * sizeof *values);
}

/* The place of each element's value among those of its item, -1 for one that has none. Null when memory is short. */
static int32_t* places_of_elements(const velorin_file* file, int32_t step, int32_t type) {
    int32_t* places = malloc((size_t)file->element_count * sizeof *places);
    int32_t next = 0;
    if (!places)
        return NULL;
    velorin_file_types(file, step, 0, file->element_count, places);
    for (int32_t e = 0; e < file->element_count; ++e)
        places[e] = places[e] == type ? next++ : -1;
    return places;
}

int velorin_file_values_of(const velorin_file* file, int32_t step, int32_t item, int32_t count, const int32_t* objects,
                           double* values, char* known) {
    const int32_t type = velorin_file_item_type(file, item);
    const int32_t objects_there = type < 0 ? file->node_count : file->element_count;
    const int32_t values_there = velorin_file_value_count(file, step, item);
    int32_t* places = NULL;
    if (type >= 0 && !(places = places_of_elements(file, step, type)))
        return 0;
    for (int32_t i = 0; i < count; ++i) {
        int32_t place = objects[i] >= 0 && objects[i] < objects_there ? objects[i] : -1;
        if (place >= 0 && places)
            place = places[place];
        known[i] = place >= 0 && place < values_there;
        values[i] = 0;
        if (known[i])
            velorin_file_values(file, step, item, place, 1, &values[i]);
    }
    free(places);
    return 1;
}
