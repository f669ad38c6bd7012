// What a message box looks like and what it answers, as numbers: what decides on a question needs no window for it.
#pragma once

/// Parts of a message box's `flags`.
namespace MessageStyle {
enum : int {
    OkCancel = 1,
    YesNo = 4,
    Stop = 16,
    Question = 32,
    Information = 64,
    SecondDefault = 256,
    Ask = Question | YesNo,             ///< 36
    AskNoDefault = Ask | SecondDefault, ///< 292
};
}

/// The button that a box was left by.
namespace MessageAnswer {
enum : int { Ok = 1, Cancel = 2, Yes = 6, No = 7 };
}
