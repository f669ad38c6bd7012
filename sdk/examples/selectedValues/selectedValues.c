/*
 * 選択値をCSVへ: the current item's values of the selected nodes or elements, a row for each step, in NAME.csv beside
 * the result file.
 */
#include "../report.h"

#include <stdlib.h>

enum { NAME_BYTES = 1024 };

/* UTF-8 as spreadsheets know it, by its mark. */
static const char first_line[] = "\xEF\xBB\xBFステップ,名称,時間";

/* In quotation marks, those within it doubled, and line ends as blanks. */
static void put_name(FILE* text, const char* name) {
    char utf8[NAME_BYTES];
    velorin_file_utf8(name, utf8, sizeof utf8);
    for (const char* next = utf8; *next; ++next) {
        if (*next == '"')
            fputc('"', text);
        fputc((unsigned char)*next < ' ' ? ' ' : *next, text);
    }
}

static void put_heads(FILE* text, const velorin_file* file, const velorin_addin_call* call) {
    const char* kind = call->selected_kind == VELORIN_SELECTED_ELEMENTS ? "要素" : "節点";
    for (int32_t i = 0; i < call->selected_count; ++i) {
        fprintf(text, ",\"");
        put_name(text, velorin_file_item_name(file, call->current_item));
        fprintf(text, " %s %ld\"", kind, (long)call->selected[i] + 1);
    }
    fputs("\r\n", text);
}

/* The shortest digits that read back as the same number. */
static void put_number(FILE* text, double number) {
    char digits[32];
    for (int count = 15; count <= 17; ++count) {
        snprintf(digits, sizeof digits, "%.*g", count, number);
        if (strtod(digits, NULL) == number)
            break;
    }
    fputs(digits, text);
}

static int put_steps(FILE* text, const velorin_file* file, const velorin_addin_call* call) {
    double* values = calloc((size_t)call->selected_count, sizeof *values);
    char* known = calloc((size_t)call->selected_count, 1);
    int good = values && known;
    for (int32_t step = 0; good && step < velorin_file_step_count(file); ++step) {
        good =
            velorin_file_values_of(file, step, call->current_item, call->selected_count, call->selected, values, known);
        fprintf(text, "%ld,\"", (long)step + 1);
        put_name(text, velorin_file_step_name(file, step));
        fputs("\",", text);
        put_number(text, velorin_file_step_time(file, step));
        for (int32_t i = 0; good && i < call->selected_count; ++i) {
            fputc(',', text);
            if (known[i])
                put_number(text, values[i]);
        }
        fputs("\r\n", text);
    }
    free(values);
    free(known);
    return good;
}

/* A selection belongs to the item that was shown when it was made, and may be older than the one shown now. */
static int fits(const velorin_file* file, const velorin_addin_call* call) {
    const int wants_elements = velorin_file_item_type(file, call->current_item) >= 0;
    return call->selected_kind == (wants_elements ? VELORIN_SELECTED_ELEMENTS : VELORIN_SELECTED_NODES);
}

void velorin_addin_run(const velorin_addin_call* call) {
    struct report report;
    velorin_file* file = report_input(call);
    if (!file)
        return;
    if (call->selected_count < 1) {
        report_problem(call, "節点または要素を選択してください。", NULL);
    } else if (call->current_item < 0 || !fits(file, call)) {
        report_problem(call, "選択とコンタアイテムが対応していません。", NULL);
    } else if (report_begin(&report, call, ".csv", first_line)) {
        put_heads(report.text, file, call);
        report_end(&report, call, put_steps(report.text, file, call));
    }
    velorin_file_close(file);
}
