#ifndef BOARD_PAGEINDEX_H
#define BOARD_PAGEINDEX_H

#include <application/Application.h>

#include <QStackedWidget>

namespace Board
{

/// The position of the first page of class `Page` in the stack; -1 when there is none, or while the
/// application has page positions disabled. Looked up anew at each call.
template <class Page>
long getPageIndex(const QStackedWidget& stack)
{
    if (Zandu::application->leafIndexDisabled) {
        return -1;
    }
    for (int index = 0; index < stack.count(); ++index) {
        if (dynamic_cast<const Page*>(stack.widget(index)) != nullptr) {
            return index;
        }
    }
    return -1;
}

} // namespace Board

#endif
