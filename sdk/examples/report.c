#define _POSIX_C_SOURCE 200809L
#include "report.h"

#include <errno.h>
#include <locale.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

void report_problem(const velorin_addin_call* call, const char* message, const char* name) {
    snprintf(call->error, call->error_size, "%s%s%s", message, name ? "\n" : "", name ? name : "");
}

velorin_file* report_input(const velorin_addin_call* call) {
    enum velorin_file_problem problem = VELORIN_FILE_UNREADABLE;
    velorin_file* file = call->file_handle < 0 ? NULL : velorin_file_open(call->file_handle, &problem);
    if (call->file_handle < 0)
        report_problem(call, "計算結果ファイルが開かれていません。", NULL);
    else if (problem == VELORIN_FILE_NO_MEMORY)
        report_problem(call, "メモリが不足しています。", NULL);
    else if (problem)
        report_problem(call, "計算結果ファイルを読むことができません。", call->file_name);
    return file;
}

/* Whether there is nothing in the way, or what an earlier run has left. */
static int may_replace(const char* name, const char* first) {
    const size_t length = strlen(first);
    FILE* there = fopen(name, "rb");
    int same = 1;
    if (!there)
        return errno == ENOENT;
    for (size_t i = 0; i < length && same; ++i)
        same = fgetc(there) == (unsigned char)first[i];
    fclose(there);
    return same;
}

int report_begin(struct report* report, const velorin_addin_call* call, const char* ending, const char* first) {
    const char* folder_end = strrchr(call->file_name, '/');
    const char* point = strrchr(call->file_name, '.');
    const size_t stem = point && point > folder_end ? (size_t)(point - call->file_name) : strlen(call->file_name);
    memset(report, 0, sizeof *report);
    if (stem + strlen(ending) + sizeof ".XXXXXX" > sizeof report->name) {
        report_problem(call, "ファイル名が長すぎます。", call->file_name);
        return 0;
    }
    snprintf(report->name, sizeof report->name, "%.*s%s", (int)stem, call->file_name, ending);
    snprintf(report->part, sizeof report->part, "%.*s%s.XXXXXX", (int)stem, call->file_name, ending);
    if (!may_replace(report->name, first)) {
        report_problem(call, "同じ名前の別のファイルがあります。上書きしません。", report->name);
        return 0;
    }
    const int handle = mkstemp(report->part);
    report->text = handle < 0 ? NULL : fdopen(handle, "w");
    if (!report->text) {
        report_problem(call, strerror(errno), report->name);
        if (handle >= 0) {
            close(handle);
            unlink(report->part);
        }
        return 0;
    }
    fchmod(handle, S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH);
    report->locale = newlocale(LC_NUMERIC_MASK, "C", duplocale(uselocale((locale_t)0)));
    report->locale = uselocale((locale_t)report->locale);
    fputs(first, report->text);
    return 1;
}

int report_end(struct report* report, const velorin_addin_call* call, int good) {
    int written = !ferror(report->text);
    written = fclose(report->text) == 0 && written;
    freelocale(uselocale((locale_t)report->locale));
    if (good && written && rename(report->part, report->name) == 0)
        return 1;
    report_problem(call, good ? strerror(errno) : "メモリが不足しています。", report->name);
    unlink(report->part);
    return 0;
}
