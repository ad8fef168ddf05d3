#include <application/Application.h>

namespace Zandu
{

Application* application = nullptr;

Application::Application()
    : copyright(QStringLiteral("Kestoboard " KESTOBOARD_VERSION " © 2026"))
    , detailedCopyright(QStringLiteral("<b>Kestoboard " KESTOBOARD_VERSION "</b><br />"
                                       "© 2026 the Kestoboard founders"))
{
}

const QString& Application::getCopyright(bool detailed) const
{
    return detailed ? detailedCopyright : copyright;
}

} // namespace Zandu
