#pragma once

#include <QString>

#include <functional>

namespace forms {

// Flag numbers of the message box.
inline constexpr int vbYesNo = 4;
inline constexpr int vbCritical = 16;
inline constexpr int vbQuestion = 32;
inline constexpr int vbExclamation = 48;
inline constexpr int vbInformation = 64;
inline constexpr int vbDefaultButton2 = 256;
// Answers.
inline constexpr int vbOK = 1;
inline constexpr int vbYes = 6;
inline constexpr int vbNo = 7;

// Shows a modal box over the active screen and returns the answer. Closing it with Escape answers
// OK or, in a question, no. The text is shown as it stands, never as rich text; a very long one
// wraps and scrolls. Buttons are in Portuguese.
int MsgBox(const QString& text, int flags, const QString& title);

// Whether a box, or another dialog that is no form, waits for the user.
bool IsBoxOpen();

// Puts something in place of the next boxes (tests). An empty function restores the real box.
using MsgBoxHandler = std::function<int(const QString& text, int flags, const QString& title)>;
void SetMsgBoxHandler(MsgBoxHandler handler);

}  // namespace forms
