#include <application/FixedFont.h>

#include <QFontDatabase>
#include <QFontInfo>

namespace Zandu
{

QFont getFixedFont()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    // Without a desktop the system may name one that is none.
    if (!QFontInfo(font).fixedPitch()) {
        font.setFamily(QStringLiteral("monospace"));
        font.setStyleHint(QFont::Monospace);
    }
    return font;
}

} // namespace Zandu
