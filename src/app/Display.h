#ifndef APP_DISPLAY_H
#define APP_DISPLAY_H

namespace Kestoboard
{

/// Whether a window can be shown to a person. Before the QApplication is made this is what the
/// environment promises, afterwards what the program really draws on.
bool hasDisplay();

/// Whether a QApplication can be made at all, be it one that nobody sees.
bool hasPlatform();

/// Has the program draw where nobody sees it. Before the QApplication is made.
void useNoDisplay();

/// As long as it lives, a display that cannot be opened ends the program with a sentence and
/// status 1, instead of aborting it.
class DisplayGuard
{
public:
    DisplayGuard();
    ~DisplayGuard();
    DisplayGuard(const DisplayGuard&) = delete;
    DisplayGuard& operator=(const DisplayGuard&) = delete;
};

} // namespace Kestoboard

#endif
