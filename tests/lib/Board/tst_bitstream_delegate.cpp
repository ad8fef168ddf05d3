#include "support/TestMain.h"

#include <Board/BitstreamDelegate.h>
#include <foundation/Debug.h>
#include <foundation/Theme.h>

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QStandardItemModel>
#include <QStyleOptionViewItem>
#include <QTextDocument>

using Board::BitstreamDelegate;

namespace
{

const QRect row(20, 30, 200, 58);
const QColor paper(1, 2, 3);

QImage getPaper()
{
    QImage image(260, 120, QImage::Format_ARGB32_Premultiplied);
    image.fill(paper);
    return image;
}

QStandardItem* createItem(const QString& path, const QString& name)
{
    auto* item = new QStandardItem(name);
    item->setData(path, Qt::UserRole);
    return item;
}

QImage paintRow(const QModelIndex& index, QStyle::State state, const QRect& rect = row,
                QImage image = getPaper())
{
    QStyleOptionViewItem option;
    option.rect = rect;
    option.state = state;
    QPainter painter(&image);
    BitstreamDelegate(nullptr).paint(&painter, option, index);
    return image;
}

QImage paintRow(const QString& path, const QString& name, QStyle::State state = QStyle::State_None)
{
    QStandardItemModel model;
    model.appendRow(createItem(path, name));
    return paintRow(model.index(0, 0), state);
}

// What a row is, drawn from its measures.
QImage drawCard(const std::string& colorName, const std::string& iconName, const QString& html)
{
    QImage image = getPaper();
    QPainter painter(&image);
    painter.fillRect(row, Orvex::theme->getColor(colorName));
    Orvex::theme->getIcon(iconName).paint(&painter, QRect(25, 35, 48, 48),
                                          Qt::AlignLeft | Qt::AlignVCenter);
    QTextDocument document;
    document.setHtml(html);
    painter.translate(78, 40);
    document.drawContents(&painter, QRectF(0, 0, 142, 48));
    return image;
}

QString getHtml(const QString& name, const QString& description)
{
    return QString("<font color=\"%1\"><b>%2</b></font><br /><font size=-1 "
                   "color=\"%3\">%4</font>")
        .arg(Orvex::theme->getColorName("text"), name, Orvex::theme->getColorName("text_light"),
             description);
}

} // namespace

class TestBitstreamDelegate : public QObject
{
    Q_OBJECT

private slots:
    void everyRowHasTheSameSize();
    void theSuffixDecidesWhatARowIs_data();
    void theSuffixDecidesWhatARowIs();
    void selectedAndHoveredRowsDifferInTheFillAlone_data();
    void selectedAndHoveredRowsDifferInTheFillAlone();
    void theFillKeepsAwayFromTheEdgeOfThePaper();
    void theFillEndsWithTheRow();
    void theNameIsHtml();
    void aLongNameIsCutOffAtTheEndOfTheRow();
    void otherRolesAreNotLookedAt();
    void anIndexWithoutAModelIsAPlainRow();
    void thePainterComesBackWhereItWas();
    void debugModeMakesNoDifference();
};

void TestBitstreamDelegate::everyRowHasTheSameSize()
{
    const BitstreamDelegate delegate(nullptr);
    QStandardItemModel model;
    model.appendRow(createItem("/a.ksb", "a.ksb"));
    QStyleOptionViewItem option;
    QCOMPARE(delegate.sizeHint(option, QModelIndex()), QSize(200, 58));
    option.rect = QRect(0, 0, 1000, 3);
    option.state = QStyle::State_Selected;
    option.font.setPointSize(40);
    QCOMPARE(delegate.sizeHint(option, model.index(0, 0)), QSize(200, 58));
}

void TestBitstreamDelegate::theSuffixDecidesWhatARowIs_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("icon");
    QTest::addColumn<QString>("description");
    const QString bitstream = "Bitstream file";

    QTest::newRow("ksb") << "/dir/name.ksb"
                         << "ksb" << bitstream;
    QTest::newRow("bbs") << "/dir/name.bbs"
                         << "bbs" << bitstream;
    QTest::newRow("bts") << "/dir/name.bts"
                         << "bts" << bitstream;
    QTest::newRow("upper case") << "/dir/name.KSB"
                                << "ksb" << bitstream;
    QTest::newRow("mixed case") << "/dir/name.Bts"
                                << "bts" << bitstream;
    QTest::newRow("the last suffix counts") << "/dir/name.tar.bbs"
                                            << "bbs" << bitstream;
    QTest::newRow("packed") << "/dir/name.ksb.gz"
                            << "directory" << QString();
    QTest::newRow("no suffix") << "/dir/ksb"
                               << "directory" << QString();
    QTest::newRow("a directory") << "/some/dir.ksb/"
                                 << "directory" << QString();
    QTest::newRow("a longer suffix") << "/dir/name.ksbs"
                                     << "directory" << QString();
    QTest::newRow("no path") << QString() << "directory" << QString();
}

void TestBitstreamDelegate::theSuffixDecidesWhatARowIs()
{
    QFETCH(QString, path);
    QFETCH(QString, icon);
    QFETCH(QString, description);
    QCOMPARE(paintRow(path, "name"),
             drawCard("background", icon.toStdString(), getHtml("name", description)));
}

void TestBitstreamDelegate::selectedAndHoveredRowsDifferInTheFillAlone_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("fill");
    const auto add = [](const char* name, QStyle::State state, const char* fill) {
        QTest::newRow(name) << static_cast<int>(state) << fill;
    };
    add("plain", QStyle::State_None, "background");
    add("enabled and focused", QStyle::State_Enabled | QStyle::State_HasFocus, "background");
    add("selected", QStyle::State_Selected, "button_checked");
    add("hovered", QStyle::State_MouseOver, "button_checked");
    add("both", QStyle::State_Selected | QStyle::State_MouseOver, "button_checked");
}

void TestBitstreamDelegate::selectedAndHoveredRowsDifferInTheFillAlone()
{
    QFETCH(int, state);
    QFETCH(QString, fill);
    QVERIFY(Orvex::theme->getColor("background") != Orvex::theme->getColor("button_checked"));
    QCOMPARE(paintRow("/dir/name.ksb", "name.ksb", QStyle::State(state)),
             drawCard(fill.toStdString(), "ksb", getHtml("name.ksb", "Bitstream file")));
}

void TestBitstreamDelegate::theFillKeepsAwayFromTheEdgeOfThePaper()
{
    QImage image(200, 58, QImage::Format_ARGB32_Premultiplied);
    image.fill(paper);
    image = paintRow(QModelIndex(), QStyle::State_None, image.rect(), image);
    const QColor fill = Orvex::theme->getColor("background");
    QCOMPARE(image.pixelColor(2, 2), fill);
    QCOMPARE(image.pixelColor(198, 56), fill);
    for (int x = 0; x < image.width(); ++x) {
        QCOMPARE(image.pixelColor(x, 0), paper);
        QCOMPARE(image.pixelColor(x, 1), paper);
        QCOMPARE(image.pixelColor(x, 57), paper);
    }
    for (int y = 0; y < image.height(); ++y) {
        QCOMPARE(image.pixelColor(0, y), paper);
        QCOMPARE(image.pixelColor(1, y), paper);
        QCOMPARE(image.pixelColor(199, y), paper);
    }
}

void TestBitstreamDelegate::theFillEndsWithTheRow()
{
    const QImage image = paintRow("/dir/name.ksb", "name.ksb");
    const QColor fill = Orvex::theme->getColor("background");
    QCOMPARE(image.pixelColor(20, 30), fill);
    QCOMPARE(image.pixelColor(219, 87), fill);
    QCOMPARE(image.pixelColor(19, 30), paper);
    QCOMPARE(image.pixelColor(20, 29), paper);
    QCOMPARE(image.pixelColor(220, 87), paper);
    QCOMPARE(image.pixelColor(219, 88), paper);
}

void TestBitstreamDelegate::theNameIsHtml()
{
    const QString name = "<i>A</i> &amp; B %1 %2.ksb";
    const QImage image = paintRow("/dir/x.ksb", name);
    QImage expected = drawCard("background", "ksb", getHtml("NAME", "Bitstream file"));
    QVERIFY(image != expected);
    QString html = getHtml("NAME", "Bitstream file");
    QCOMPARE(image, drawCard("background", "ksb", html.replace("NAME", name)));
    html = getHtml("NAME", "Bitstream file");
    QVERIFY(image != drawCard("background", "ksb", html.replace("NAME", name.toHtmlEscaped())));
}

void TestBitstreamDelegate::aLongNameIsCutOffAtTheEndOfTheRow()
{
    const QImage image = paintRow("/dir/x.ksb", QString(200, 'W') + ".ksb");
    for (int y = 0; y < image.height(); ++y) {
        for (int x = row.right() + 1; x < image.width(); ++x) {
            QCOMPARE(image.pixelColor(x, y), paper);
        }
    }
}

void TestBitstreamDelegate::otherRolesAreNotLookedAt()
{
    QStandardItemModel model;
    QStandardItem* item = createItem("/dir/name.ksb", "name.ksb");
    item->setData(QColor(Qt::red), Qt::ForegroundRole);
    item->setData(QColor(Qt::green), Qt::BackgroundRole);
    item->setData(Orvex::theme->getIcon("recent"), Qt::DecorationRole);
    item->setData(int(Qt::AlignRight), Qt::TextAlignmentRole);
    item->setData(QFont("Serif", 30), Qt::FontRole);
    model.appendRow(item);
    QCOMPARE(paintRow(model.index(0, 0), QStyle::State_None),
             paintRow("/dir/name.ksb", "name.ksb"));
}

void TestBitstreamDelegate::anIndexWithoutAModelIsAPlainRow()
{
    QCOMPARE(paintRow(QModelIndex(), QStyle::State_None),
             drawCard("background", "directory", getHtml(QString(), QString())));
}

void TestBitstreamDelegate::thePainterComesBackWhereItWas()
{
    QImage image = getPaper();
    QPainter painter(&image);
    painter.translate(3, 4);
    const QTransform before = painter.transform();
    QStyleOptionViewItem option;
    option.rect = row;
    BitstreamDelegate(nullptr).paint(&painter, option, QModelIndex());
    QCOMPARE(painter.transform(), before);
    QVERIFY(!painter.hasClipping());
}

void TestBitstreamDelegate::debugModeMakesNoDifference()
{
    const QImage plain = paintRow("/dir/name.bts", "name.bts");
    const Test::DebugMode debug(true);
    QCOMPARE(paintRow("/dir/name.bts", "name.bts"), plain);
}

KESTOBOARD_TEST_MAIN(TestBitstreamDelegate)

#include "tst_bitstream_delegate.moc"
