#include "app/TourVariant.h"

#include <QCoreApplication>
#include <QStringList>

namespace Kestoboard
{

QVector<TourVariant> TourVariant::getAll()
{
    QVector<TourVariant> variants;
    for (const auto scheme : {Orvex::Theme::Scheme::Light, Orvex::Theme::Scheme::Dark}) {
        for (const bool hasBoards : {true, false}) {
            for (const bool isDebug : {false, true}) {
                variants += TourVariant{hasBoards, isDebug, scheme};
            }
        }
    }
    return variants;
}

QString TourVariant::getFileName(const QString& page) const
{
    QStringList parts(page);
    if (!hasBoards) {
        parts << QStringLiteral("no-board");
    }
    if (isDebug) {
        parts << QStringLiteral("debug");
    }
    parts << (scheme == Orvex::Theme::Scheme::Dark ? QStringLiteral("dark")
                                                   : QStringLiteral("light"));
    return parts.join(QLatin1Char('-')) + QStringLiteral(".png");
}

QString TourVariant::getDescription() const
{
    const QString boards = hasBoards ? tr("with boards") : tr("without boards");
    const QString mode = isDebug ? tr("in debug mode") : tr("in plain mode");
    const QString look = scheme == Orvex::Theme::Scheme::Dark ? tr("dark") : tr("light");
    return QStringList{boards, mode, look}.join(QStringLiteral(", "));
}

} // namespace Kestoboard
