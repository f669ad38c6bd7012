// Tries the rows of a form: whatever a record holds must come back from the controls that were filled with it.
#pragma once

#include "platform/widgets/FormBinding.h"

#include <gtest/gtest.h>

/// `one` and `other` differ in every field that the rows stand for and in no other, so that a row that carries nothing,
/// the wrong field or one that another row carries is seen, and so is a field without a row.
template<class Record>
void expectRoundTrip(const FormSupport::Rows<Record>& rows, const Record& one, const Record& other) {
    for (const auto& [from, into] : {std::pair(one, other), std::pair(other, one)}) {
        rows.Fill(from);
        Record all = into;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const Record before = all;
            rows[i].Read(all);
            EXPECT_FALSE(all == before) << "row " << i;
        }
        EXPECT_TRUE(all == from);
    }
}
