/*
 * What both examples share: a text file beside the result file, put in place only when it is whole, and the words for
 * what went wrong. An older file of the same name is replaced only when a run of the same add-in has written it, which
 * its first line shows.
 */
#ifndef REPORT_H
#define REPORT_H

#include "velorin_addin.h"
#include "velorin_file.h"

#include <stdio.h>

enum { REPORT_NAME_BYTES = 4096 };

struct report {
    FILE* text; /* open between begin and end */
    char name[REPORT_NAME_BYTES];
    char part[REPORT_NAME_BYTES]; /* what it is called until it is whole */
    void* locale;                 /* of the caller; the report's numbers have a point */
};

/* Writes a message for the user into the call's error text; `name` may be null. */
void report_problem(const velorin_addin_call* call, const char* message, const char* name);

/* The open result file, to be closed by the caller; null, with the message, when there is none. */
velorin_file* report_input(const velorin_addin_call* call);

/*
 * Begins FOLDER/NAME`ending` for the result file FOLDER/NAME.vrf with the line `first`, which must not be there with
 * other words. 0, with the message, when that can't be done.
 */
int report_begin(struct report* report, const velorin_addin_call* call, const char* ending, const char* first);

/*
 * Puts the file in its place if `good`, that is unless memory was short; 0, with the message and without a new file,
 * then and when not all could be written.
 */
int report_end(struct report* report, const velorin_addin_call* call, int good);

#endif
