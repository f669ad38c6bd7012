#include "app/windows/ShowMessage.h"

#include "app/mdApplication.h"
#include "platform/widgets/Dialogs.h"

std::function<void(bool lower)> mdApplication::MessageBoxHook;

int mdApplication::ShowMessage(const QString& text, int flags) {
    if (MessageBoxHook)
        MessageBoxHook(true);
    const int button = Dialogs::MessageBox(nullptr, text, ApplicationTitle, flags);
    if (MessageBoxHook)
        MessageBoxHook(false);
    return button;
}
