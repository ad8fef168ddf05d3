#ifndef APP_TOURVARIANT_H
#define APP_TOURVARIANT_H

#include <foundation/Theme.h>

#include <QCoreApplication>
#include <QString>
#include <QVector>

namespace Kestoboard
{

/// One way in which the tour shows the panel.
struct TourVariant {
    Q_DECLARE_TR_FUNCTIONS(Kestoboard::TourVariant)

public:
    bool hasBoards;
    bool isDebug;
    Orvex::Theme::Scheme scheme;

    /// All of them, the plain one first.
    static QVector<TourVariant> getAll();

    /// The name of the picture of a page, without a directory.
    QString getFileName(const QString& page) const;
    /// The variant in words.
    QString getDescription() const;
};

} // namespace Kestoboard

#endif
