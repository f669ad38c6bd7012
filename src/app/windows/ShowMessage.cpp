#include "app/windows/ShowMessage.h"

#include "app/mdApplication.h"
#include "app/windows/GraphWindows.h"
#include "platform/widgets/Dialogs.h"

int mdApplication::ShowMessage(const QString& text, int flags) {
    LowerGraphWindows(true);
    const int button = Dialogs::MessageBox(Dialogs::FrontWindow(), text, ApplicationTitle, flags);
    LowerGraphWindows(false);
    return button;
}
