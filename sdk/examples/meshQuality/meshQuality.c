/*
 * メッシュ品質: smallest angle, aspect ratio and area of each element of the step that is shown, as NAME.quality.txt
 * beside the result file, the worst elements first; then opened by the desktop.
 *
 * The angle is the smallest one inside the element, in degrees; the ratio that of its longest to its shortest side; the
 * area that of the polygon of its nodes. Missing nodes are left out.
 */
#define _GNU_SOURCE
#include "../report.h"

#include <fcntl.h>
#include <math.h>
#include <spawn.h>
#include <stdlib.h>
#include <string.h>
#include <sys/wait.h>
#include <unistd.h>

enum { WORST = 20, NAME_BYTES = 1024 };

struct quality {
    int32_t element;
    double angle, ratio, area;
};

struct survey {
    struct quality* all;
    int32_t count, lines, absent, odd; /* odd: coordinates that are no numbers or too large */
};

static double distance(const double* from, const double* to) {
    return hypot(to[0] - from[0], to[1] - from[1]);
}

/* Positive for nodes that go round anticlockwise. */
static double area_of(const double* points, int32_t count) {
    double twice = 0;
    for (int32_t i = 0; i < count; ++i) {
        const double *here = points + 2 * i, *next = points + 2 * ((i + 1) % count);
        /* From the first point, so that elements far from the origin keep their digits. */
        twice += (here[0] - points[0]) * (next[1] - points[1]) - (next[0] - points[0]) * (here[1] - points[1]);
    }
    return twice / 2;
}

/* The angle inside the element at a corner, 0 to 360. */
static double angle_at(const double* before, const double* here, const double* after, double turn) {
    const double ax = after[0] - here[0], ay = after[1] - here[1], bx = before[0] - here[0], by = before[1] - here[1];
    const double angle = atan2(turn * (ax * by - ay * bx), ax * bx + ay * by) * 180 / acos(-1);
    return angle < 0 ? angle + 360 : angle;
}

static void measure(const double* points, int32_t count, struct quality* quality) {
    const double area = area_of(points, count);
    double longest = 0, shortest = INFINITY;
    quality->area = fabs(area);
    quality->angle = INFINITY;
    for (int32_t i = 0; i < count; ++i) {
        const double *before = points + 2 * ((i + count - 1) % count), *here = points + 2 * i;
        const double* after = points + 2 * ((i + 1) % count);
        quality->angle = fmin(quality->angle, angle_at(before, here, after, area < 0 ? -1 : 1));
        longest = fmax(longest, distance(here, after));
        shortest = fmin(shortest, distance(here, after));
    }
    quality->ratio = shortest > 0 ? longest / shortest : INFINITY;
}

static int is_measured(const struct quality* quality) {
    return !isnan(quality->angle) && !isnan(quality->ratio) && !isnan(quality->area);
}

/* The corners that there are, in `points`, which has room for all; their number. -1 if one is no number. */
static int32_t corners_of(const velorin_file* file, int32_t element, double* points) {
    const double* coordinates = velorin_file_coordinates(file);
    const int32_t* nodes;
    int32_t used = 0;
    const int32_t count = velorin_file_element(file, element, &nodes);
    for (int32_t i = 0; i < count; ++i) {
        if (nodes[i] < 0 || nodes[i] >= velorin_file_node_count(file))
            continue;
        const double* point = coordinates + 2 * (size_t)nodes[i];
        if (!isfinite(point[0]) || !isfinite(point[1]))
            return -1;
        memcpy(points + 2 * (size_t)used++, point, 2 * sizeof *point);
    }
    return used;
}

static int32_t most_corners(const velorin_file* file) {
    const int32_t* nodes;
    int32_t most = 0;
    for (int32_t e = 0; e < velorin_file_element_count(file); ++e) {
        const int32_t count = velorin_file_element(file, e, &nodes);
        most = count > most ? count : most;
    }
    return most;
}

/* 0 when memory is short. */
static int survey_of(const velorin_file* file, int32_t step, struct survey* survey) {
    const int32_t elements = velorin_file_element_count(file);
    double* points = malloc(2 * ((size_t)most_corners(file) + 1) * sizeof *points);
    int32_t* types = calloc((size_t)elements, sizeof *types);
    memset(survey, 0, sizeof *survey);
    survey->all = malloc((size_t)elements * sizeof *survey->all);
    const int good = points && types && survey->all;
    if (good && step >= 0)
        velorin_file_types(file, step, 0, elements, types);
    for (int32_t e = 0; good && e < elements; ++e) {
        const int32_t corners = types[e] < 0 ? 0 : corners_of(file, e, points);
        if (types[e] < 0) {
            ++survey->absent;
        } else if (corners < 0) {
            ++survey->odd;
        } else if (corners < 3) {
            ++survey->lines;
        } else {
            struct quality* quality = &survey->all[survey->count];
            quality->element = e;
            measure(points, corners, quality);
            if (is_measured(quality))
                ++survey->count;
            else
                ++survey->odd;
        }
    }
    free(points);
    free(types);
    return good;
}

/* Equal ones by their numbers. */
static int ascending(const struct quality* a, const struct quality* b, double of_a, double of_b) {
    return of_a != of_b ? (of_a > of_b) - (of_a < of_b) : (a->element > b->element) - (a->element < b->element);
}

static int by_angle(const void* left, const void* right) {
    const struct quality *a = left, *b = right;
    return ascending(a, b, a->angle, b->angle);
}

static int by_ratio(const void* left, const void* right) {
    const struct quality *a = left, *b = right;
    return ascending(a, b, -a->ratio, -b->ratio);
}

static int by_area(const void* left, const void* right) {
    const struct quality *a = left, *b = right;
    return ascending(a, b, a->area, b->area);
}

static int by_number(const void* left, const void* right) {
    return ascending(left, right, 0, 0);
}

static void put_table(FILE* text, const char* title, struct survey* survey, int32_t count,
                      int (*order)(const void*, const void*)) {
    qsort(survey->all, (size_t)survey->count, sizeof *survey->all, order);
    fprintf(text, "\n%s\n      要素       最小角       縦横比         面積\n", title);
    for (int32_t i = 0; i < count && i < survey->count; ++i) {
        const struct quality* row = &survey->all[i];
        fprintf(text, "%10ld %12.2f %12.3f %12.5g\n", (long)row->element + 1, row->angle, row->ratio, row->area);
    }
}

static void put_extremes(FILE* text, const struct survey* survey) {
    double sums[3] = {0, 0, 0}, least[3] = {INFINITY, INFINITY, INFINITY}, most[3] = {0, 0, 0};
    static const char* const names[] = {"最小角 [度]", "縦横比     ", "面積       "};
    for (int32_t i = 0; i < survey->count; ++i) {
        const double row[] = {survey->all[i].angle, survey->all[i].ratio, survey->all[i].area};
        for (int k = 0; k < 3; ++k) {
            sums[k] += row[k];
            least[k] = fmin(least[k], row[k]);
            most[k] = fmax(most[k], row[k]);
        }
    }
    fputs("\n                    最小         平均         最大\n", text);
    for (int k = 0; k < 3 && survey->count > 0; ++k)
        fprintf(text, "%s %12.5g %12.5g %12.5g\n", names[k], least[k], sums[k] / survey->count, most[k]);
}

static void put_report(FILE* text, const velorin_file* file, const velorin_addin_call* call, struct survey* survey) {
    char title[NAME_BYTES];
    velorin_file_utf8(velorin_file_title(file), title, sizeof title);
    fprintf(text, "%s\n%s\n\n", call->file_name, title);
    if (call->current_step >= 0)
        fprintf(text, "ステップ %ld、", (long)call->current_step + 1);
    fprintf(text, "面要素 %ld、線要素 %ld、存在しない要素 %ld、計算できない要素 %ld\n", (long)survey->count,
            (long)survey->lines, (long)survey->absent, (long)survey->odd);
    fputs("最小角は要素の内角の最小値、縦横比は最長の辺と最短の辺の比。\n", text);
    put_extremes(text, survey);
    put_table(text, "最小角の小さい要素", survey, WORST, by_angle);
    put_table(text, "縦横比の大きい要素", survey, WORST, by_ratio);
    put_table(text, "面積の小さい要素", survey, WORST, by_area);
    put_table(text, "全ての面要素", survey, survey->count, by_number);
}

/* By the desktop's own opener, which must not stay behind as a child of the program. Without one nothing happens. */
static void show(const char* name) {
    char* const arguments[] = {"setsid", "--fork", "xdg-open", (char*)name, NULL};
    posix_spawn_file_actions_t quietly;
    pid_t child;
    posix_spawn_file_actions_init(&quietly);
    posix_spawn_file_actions_addopen(&quietly, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    if (posix_spawnp(&child, arguments[0], &quietly, NULL, arguments, environ) == 0)
        waitpid(child, NULL, 0);
    posix_spawn_file_actions_destroy(&quietly);
}

void velorin_addin_run(const velorin_addin_call* call) {
    struct report report;
    struct survey survey;
    velorin_file* file = report_input(call);
    if (!file)
        return;
    const int good = survey_of(file, call->current_step, &survey);
    if (report_begin(&report, call, ".quality.txt", "メッシュ品質\n")) {
        if (good)
            put_report(report.text, file, call, &survey);
        if (report_end(&report, call, good))
            show(report.name);
    }
    free(survey.all);
    velorin_file_close(file);
}
