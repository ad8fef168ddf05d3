#ifndef APPLICATION_APPLICATION_H
#define APPLICATION_APPLICATION_H

#include <application/Export.h>

#include <QString>

namespace Zandu
{

/// What the pages ask of the program that they run in. GUI thread only.
class ZANDU_EXPORT Application
{
public:
    Application();

    /// The name of the panel and who holds the rights in it, as the text of a label: one line of
    /// plain text, or two lines of rich text when `detailed`.
    const QString& getCopyright(bool detailed) const;

    /// While true, every query for the index of a page answers -1.
    bool leafIndexDisabled = false;

private:
    QString copyright;
    QString detailedCopyright;
};

/// The application object of the process; set by the program before the first window is made.
extern ZANDU_EXPORT Application* application;

} // namespace Zandu

#endif
