// The main window with dialogs that a test answers, and its controls by their names. No tests here.
#pragma once

#include "app/mdApplication.h"
#include "mainwin/frmMain.h"
#include "mainwin/globals.h"
#include "platform/base/Literals.h"
#include "platform/widgets/Dialogs.h"
#include "platform/widgets/PictureBox.h"
#include "result/VrfBuilder.h"
#include "view/scene/Session.h"

#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

struct WindowTest : testing::Test {
    WindowTest() {
        mdApplication::Settings = {};
        Dialogs::Testing::Start();
    }
    ~WindowTest() override {
        EXPECT_EQ(Dialogs::Testing::UnexpectedCount(), 0);
        Dialogs::Testing::Stop();
    }
    void openFirst(const QString& path) {
        window.FirstStep(path);
        ASSERT_TRUE(window.IsOpen());
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    /// Runs `act`, which is to show the one message `text`.
    void expectMessage(const QString& text, const std::function<void()>& act) {
        Dialogs::Testing::QueueAnswer(MessageAnswer::Ok);
        act();
        EXPECT_EQ(Dialogs::Testing::UnusedCount(), 0);
        const auto asked = Dialogs::Testing::Asked();
        EXPECT_TRUE(!asked.isEmpty() && asked.last().Text == text && asked.last().Flags == MessageStyle::Stop);
    }
    template<typename Object>
    Object* find(const QString& name) {
        auto* found = window.findChild<Object*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }

    TestFolder folder;
    frmMain window;
    PictureBox* const picture = find<PictureBox>(u"picScreen"_s);
};
