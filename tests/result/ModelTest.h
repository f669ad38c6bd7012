// The model of a result file that a test writes for itself. No tests here.
#pragma once

#include "VrfBuilder.h"
#include "result/mdVelorinResultModel.h"

#include <gtest/gtest.h>

struct ModelTest : testing::Test {
    void open(const VrfBuilder& file, std::int32_t step = 0, std::int32_t item = 0, std::int32_t reference = -1) {
        ASSERT_TRUE(mdVelorinResultModel::LoadResultFile(folder.Write(file.Bytes()), model));
        ASSERT_TRUE(mdVelorinResultModel::LoadStep(step, item, model, false, reference));
    }

    TestFolder folder;
    ResultModel model;
};
