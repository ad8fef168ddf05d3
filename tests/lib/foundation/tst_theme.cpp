#include <foundation/Theme.h>

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QMap>
#include <QMessageBox>
#include <QPainter>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QStyledItemDelegate>
#include <QTest>
#include <QTreeWidget>
#include <QVector>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

using Orvex::Theme;
using Scheme = Orvex::Theme::Scheme;

namespace
{

const QString resources = QStringLiteral(":/kestoboard/theme/");

double getLinear(double channel)
{
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double getLuminance(const QColor& color)
{
    return 0.2126 * getLinear(color.redF()) + 0.7152 * getLinear(color.greenF()) +
           0.0722 * getLinear(color.blueF());
}

/// From 1 to 21, as defined by the web's guidelines on accessibility.
double getContrast(const QColor& first, const QColor& second)
{
    const double one = getLuminance(first);
    const double other = getLuminance(second);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

QImage getImage(const QIcon& icon, int size, QIcon::Mode mode = QIcon::Normal)
{
    return icon.pixmap(QSize(size, size), mode)
        .toImage()
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

int countInked(const QImage& image)
{
    int inked = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            inked += qAlpha(image.pixel(x, y)) > 0 ? 1 : 0;
        }
    }
    return inked;
}

/// A rule of a style sheet, with the values of what it sets.
struct StyleRule {
    QString selector;
    QMap<QString, QString> values;

    /// Whether it is about something that shows no text: a mark, a grip, a scroll bar.
    bool isTextless() const
    {
        static const QRegularExpression parts(QStringLiteral(
            "QScrollBar|QSplitter|::(indicator|branch|corner|separator|drop-down|up-button|"
            "down-button|menu-button)"));
        return parts.match(selector).hasMatch();
    }
};

QVector<StyleRule> getRules(QString sheet)
{
    static const QRegularExpression comment(QStringLiteral("/\\*.*?\\*/"),
                                            QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression rule(QStringLiteral("([^{}]+)\\{([^{}]*)\\}"));
    QVector<StyleRule> rules;
    for (auto found = rule.globalMatch(sheet.remove(comment)); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        rules += StyleRule{match.captured(1).simplified(), {}};
        for (const QString& setting : match.captured(2).split(QLatin1Char(';'))) {
            const int colon = setting.indexOf(QLatin1Char(':'));
            if (colon > 0) {
                rules.last().values[setting.left(colon).simplified()] =
                    setting.mid(colon + 1).simplified();
            }
        }
    }
    return rules;
}

/// Remembers whether a row was painted as lying under the pointer.
class HoverDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        hovered = hovered || (option.state & QStyle::State_MouseOver) != 0;
        QStyledItemDelegate::paint(painter, option, index);
    }

    mutable bool hovered = false;
};

} // namespace

class ThemeTest : public QObject
{
    Q_OBJECT

private slots:
    void everyNameOfThePanelHasAnIcon_data();
    void everyNameOfThePanelHasAnIcon();
    void everyDrawingShowsAtEverySizeInBothSchemes_data();
    void everyDrawingShowsAtEverySizeInBothSchemes();
    void iconsAreDrawnAnewForEveryScale();
    void straightStrokesAreSharpAtTheSmallestSize_data();
    void straightStrokesAreSharpAtTheSmallestSize();
    void iconsStandOutFromTheirGround_data();
    void iconsStandOutFromTheirGround();
    void aDisabledIconIsPaler();
    void theTilesOfTheFileKindsDiffer();
    void anUnknownNameGivesAnEmptyIconAndTheColourOfText();
    void colourNamesAreColoursOfHtml_data();
    void colourNamesAreColoursOfHtml();
    void everyTextIsReadableOnItsGround_data();
    void everyTextIsReadableOnItsGround();
    void theTextOfTheDarkSchemeIsLighterThanItsGround();
    void everyColourOfTheStyleSheetIsKnown();
    void everyRuleOfTheStyleSheetIsReadable_data();
    void everyRuleOfTheStyleSheetIsReadable();
    void everyPictureOfTheStyleSheetExists_data();
    void everyPictureOfTheStyleSheetExists();
    void aSwitchReachesReferencesAndCopiesThatAreInUse();
    void aSwitchToTheSameSchemeTellsNobody();
    void iconsOutliveTheTheme();
    void theSchemeOfTheSystemIsReadFromItsPalette();
    void applyStylesTheApplication();
    void coloursAndStyleSheetComeOneByOne();
    void aBoxOfMessagesDoesNotBreakAPath();
    void anEnrichedListTellsItsDelegateOfThePointer();
    void anEnrichedComboBoxStaysAnOrdinaryOne();
    void anEnrichedComboBoxForgetsTheWidthOfEntriesThatHaveGone();
    void anEnrichedTreeStaysAnOrdinaryOneAndFollowsThePointer();
    void nothingToEnrichIsPassedOver();
};

void ThemeTest::everyNameOfThePanelHasAnIcon_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"basic", "monitoring", "bitstream", "scope", "recent", "browse",
                             "directory", "ksb", "bbs", "bts", "kestoboard"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void ThemeTest::everyNameOfThePanelHasAnIcon()
{
    QFETCH(QString, name);
    const Theme theme(Scheme::Light);
    const QIcon& icon = theme.getIcon(name.toStdString());
    QVERIFY(!icon.isNull());
    QCOMPARE(icon.name(), name);
}

void ThemeTest::everyDrawingShowsAtEverySizeInBothSchemes_data()
{
    QTest::addColumn<QString>("name");
    const QStringList drawings =
        QDir(resources + QStringLiteral("icons")).entryList({QStringLiteral("*.svg")});
    QVERIFY(drawings.size() >= 30);
    for (const QString& drawing : drawings) {
        QTest::newRow(qPrintable(drawing)) << drawing.chopped(4);
    }
}

void ThemeTest::everyDrawingShowsAtEverySizeInBothSchemes()
{
    QFETCH(QString, name);
    for (const Scheme scheme : {Scheme::Light, Scheme::Dark}) {
        const Theme theme(scheme);
        for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
            const QImage image = getImage(theme.getIcon(name.toStdString()), size);
            QCOMPARE(image.size(), QSize(size, size));
            QVERIFY(countInked(image) > size);
        }
    }
}

void ThemeTest::iconsAreDrawnAnewForEveryScale()
{
    const Theme theme(Scheme::Light);
    const QIcon& icon = theme.getIcon("bitstream");
    for (const int percent : {100, 150, 200}) {
        QImage canvas(32 * percent / 100, 32 * percent / 100, QImage::Format_ARGB32_Premultiplied);
        canvas.setDevicePixelRatio(percent / 100.0);
        canvas.fill(Qt::transparent);
        QPainter painter(&canvas);
        icon.paint(&painter, QRect(0, 0, 32, 32));
        painter.end();
        canvas.setDevicePixelRatio(1);
        QCOMPARE(canvas, getImage(icon, canvas.width()));
    }
    const QImage large = getImage(icon, 64);
    QVERIFY(large != getImage(icon, 32).scaled(64, 64));
}

void ThemeTest::straightStrokesAreSharpAtTheSmallestSize_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"open", "save", "end", "quit", "parent", "directory"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void ThemeTest::straightStrokesAreSharpAtTheSmallestSize()
{
    QFETCH(QString, name);
    const Theme theme(Scheme::Light);
    const QImage image = getImage(theme.getIcon(name.toStdString()), 16);
    int full = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            full += QColor::fromRgba(image.pixel(x, y)) == theme.getColor("accent") ? 1 : 0;
        }
    }
    // Between two pixels the stroke would be half as dark and twice as wide.
    QVERIFY2(full >= 4, qPrintable(QString::number(full)));
}

void ThemeTest::iconsStandOutFromTheirGround_data()
{
    QTest::addColumn<Scheme>("scheme");
    QTest::newRow("light") << Scheme::Light;
    QTest::newRow("dark") << Scheme::Dark;
}

void ThemeTest::iconsStandOutFromTheirGround()
{
    QFETCH(Scheme, scheme);
    const Theme theme(scheme);
    for (const char* ground : {"window", "base", "background", "button_hover", "button_checked"}) {
        for (const char* ink : {"icon", "accent"}) {
            QVERIFY2(getContrast(theme.getColor(ink), theme.getColor(ground)) >= 3, ground);
        }
    }
    // The ink is really the one that the drawing shows.
    const QImage image = getImage(theme.getIcon("close"), 64);
    QCOMPARE(QColor(image.pixel(32, 32)), theme.getColor("icon"));
}

void ThemeTest::aDisabledIconIsPaler()
{
    const Theme theme(Scheme::Light);
    const QImage normal = getImage(theme.getIcon("close"), 64);
    const QImage disabled = getImage(theme.getIcon("close"), 64, QIcon::Disabled);
    QVERIFY(qAlpha(disabled.pixel(32, 32)) > 0);
    QVERIFY(qAlpha(disabled.pixel(32, 32)) < qAlpha(normal.pixel(32, 32)));
}

void ThemeTest::theTilesOfTheFileKindsDiffer()
{
    const Theme theme(Scheme::Light);
    for (const int size : {16, 48}) {
        const QImage ksb = getImage(theme.getIcon("ksb"), size);
        const QImage bbs = getImage(theme.getIcon("bbs"), size);
        const QImage bts = getImage(theme.getIcon("bts"), size);
        QVERIFY(ksb != bbs);
        QVERIFY(bbs != bts);
        QVERIFY(bts != ksb);
    }
}

void ThemeTest::anUnknownNameGivesAnEmptyIconAndTheColourOfText()
{
    const Theme theme(Scheme::Dark);
    for (const char* name : {"", "no such name", "Basic"}) {
        QVERIFY(theme.getIcon(name).isNull());
        QCOMPARE(theme.getColor(name), theme.getColor("text"));
        QCOMPARE(theme.getColorName(name), theme.getColorName("text"));
    }
}

void ThemeTest::colourNamesAreColoursOfHtml_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"background", "button_checked", "text", "text_light", "error",
                             "warning", "success", "accent", "border", "base", "window"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void ThemeTest::colourNamesAreColoursOfHtml()
{
    QFETCH(QString, name);
    static const QRegularExpression html(QStringLiteral("^#[0-9a-f]{6}$"));
    for (const Scheme scheme : {Scheme::Light, Scheme::Dark}) {
        const Theme theme(scheme);
        const QString& text = theme.getColorName(name.toStdString());
        QVERIFY(html.match(text).hasMatch());
        QCOMPARE(QColor(text), theme.getColor(name.toStdString()));
        QVERIFY(name == QLatin1String("text") || text != theme.getColorName("text"));
    }
}

void ThemeTest::everyTextIsReadableOnItsGround_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("ground");
    const std::pair<const char*, std::vector<const char*>> pairs[] = {
        {"text",
         {"window", "base", "background", "button", "button_hover", "button_checked", "match"}},
        {"text_light", {"window", "base", "background", "button_hover", "button_checked"}},
        {"disabled", {"window", "base"}},
        {"accent", {"window", "base"}},
        {"error", {"window", "base", "background"}},
        {"warning", {"window", "base", "background"}},
        {"success", {"window", "base", "background"}},
        {"selection_text", {"selection"}},
        {"tooltip_text", {"tooltip"}},
    };
    for (const auto& [text, grounds] : pairs) {
        for (const char* ground : grounds) {
            QTest::addRow("%s on %s", text, ground)
                << QString::fromLatin1(text) << QString::fromLatin1(ground);
        }
    }
}

void ThemeTest::everyTextIsReadableOnItsGround()
{
    QFETCH(QString, text);
    QFETCH(QString, ground);
    for (const Scheme scheme : {Scheme::Light, Scheme::Dark}) {
        const Theme theme(scheme);
        const double contrast =
            getContrast(theme.getColor(text.toStdString()), theme.getColor(ground.toStdString()));
        QVERIFY2(contrast >= 4.5, qPrintable(QString::number(contrast)));
    }
}

void ThemeTest::theTextOfTheDarkSchemeIsLighterThanItsGround()
{
    const Theme light(Scheme::Light);
    const Theme dark(Scheme::Dark);
    QVERIFY(getLuminance(light.getColor("text")) < getLuminance(light.getColor("base")));
    QVERIFY(getLuminance(dark.getColor("text")) > getLuminance(dark.getColor("base")));
    for (const Theme* theme : {&light, &dark}) {
        const QPalette palette = theme->getPalette();
        for (const QPalette::ColorGroup group :
             {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            QVERIFY(getContrast(palette.color(group, QPalette::Text),
                                palette.color(group, QPalette::Base)) >= 4.5);
            QVERIFY(getContrast(palette.color(group, QPalette::WindowText),
                                palette.color(group, QPalette::Window)) >= 4.5);
            QVERIFY(getContrast(palette.color(group, QPalette::HighlightedText),
                                palette.color(group, QPalette::Highlight)) >= 4.5);
        }
    }
}

void ThemeTest::everyColourOfTheStyleSheetIsKnown()
{
    QFile file(resources + QStringLiteral("style.qss"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    static const QRegularExpression comment(QStringLiteral("/\\*.*?\\*/"),
                                            QRegularExpression::DotMatchesEverythingOption);
    const QString sheet = QString::fromUtf8(file.readAll()).remove(comment);
    static const QRegularExpression reference(QStringLiteral("@([a-z_]+)"));
    const Theme theme(Scheme::Light);
    int references = 0;
    for (auto found = reference.globalMatch(sheet); found.hasNext(); ++references) {
        const QString name = found.next().captured(1);
        // In the light scheme no other colour is that of text, which an unknown name would give.
        const bool known = name == QLatin1String("scheme") || name == QLatin1String("text") ||
                           theme.getColorName(name.toStdString()) != theme.getColorName("text");
        QVERIFY2(known, qPrintable(name));
    }
    QVERIFY(references > 0);
    QVERIFY(!theme.getStyleSheet().remove(comment).contains(QLatin1Char('@')));
}

void ThemeTest::everyRuleOfTheStyleSheetIsReadable_data()
{
    iconsStandOutFromTheirGround_data();
}

void ThemeTest::everyRuleOfTheStyleSheetIsReadable()
{
    QFETCH(Scheme, scheme);
    const Theme theme(scheme);
    const std::pair<const char*, const char*> pairs[] = {
        {"color", "background"},
        {"selection-color", "selection-background-color"},
    };
    int measured = 0;
    for (const StyleRule& rule : getRules(theme.getStyleSheet())) {
        for (const auto& [textKey, groundKey] : pairs) {
            const QString text = rule.values.value(textKey);
            const QString ground = rule.values.value(groundKey);
            if (rule.isTextless()) {
                continue;
            }
            // A ground without its text, or the other way round, is unreadable sooner or later.
            QVERIFY2(text.isEmpty() == ground.isEmpty(), qPrintable(rule.selector));
            if (text.isEmpty()) {
                continue;
            }
            // What lets its ground through lies on one of these.
            const QStringList grounds =
                ground == QLatin1String("transparent")
                    ? QStringList{theme.getColorName("window"), theme.getColorName("base")}
                    : QStringList(ground);
            for (const QString& behind : grounds) {
                QVERIFY2(QColor(text).isValid() && QColor(behind).isValid(),
                         qPrintable(rule.selector));
                QVERIFY2(getContrast(QColor(text), QColor(behind)) >= 4.5,
                         qPrintable(rule.selector));
            }
            ++measured;
        }
    }
    QVERIFY(measured > 30);
}

void ThemeTest::everyPictureOfTheStyleSheetExists_data()
{
    iconsStandOutFromTheirGround_data();
}

void ThemeTest::everyPictureOfTheStyleSheetExists()
{
    QFETCH(Scheme, scheme);
    static const QRegularExpression picture(QStringLiteral("url\\(([^)]*)\\)"));
    const QString sheet = Theme(scheme).getStyleSheet();
    int pictures = 0;
    for (auto found = picture.globalMatch(sheet); found.hasNext(); ++pictures) {
        const QString path = found.next().captured(1);
        QVERIFY2(QFile::exists(path), qPrintable(path));
    }
    QVERIFY(pictures > 0);
}

void ThemeTest::aSwitchReachesReferencesAndCopiesThatAreInUse()
{
    Theme theme(Scheme::Light);
    const QColor& color = theme.getColor("text");
    const QString& name = theme.getColorName("text");
    const QIcon copy = theme.getIcon("basic");
    const QImage before = getImage(copy, 32);
    const QString nameBefore = name;
    QSignalSpy changed(&theme, &Theme::schemeChanged);

    theme.setScheme(Scheme::Dark);

    QCOMPARE(changed.count(), 1);
    QCOMPARE(theme.getScheme(), Scheme::Dark);
    QVERIFY(name != nameBefore);
    QCOMPARE(color, QColor(name));
    QVERIFY(getImage(copy, 32) != before);

    theme.setScheme(Scheme::Light);
    QCOMPARE(name, nameBefore);
    QCOMPARE(getImage(copy, 32), before);
}

void ThemeTest::aSwitchToTheSameSchemeTellsNobody()
{
    Theme theme(Scheme::Dark);
    QSignalSpy changed(&theme, &Theme::schemeChanged);
    theme.setScheme(Scheme::Dark);
    QCOMPARE(changed.count(), 0);
}

void ThemeTest::iconsOutliveTheTheme()
{
    QIcon icon;
    {
        const Theme theme(Scheme::Dark);
        icon = theme.getIcon("scope");
    }
    QVERIFY(countInked(getImage(icon, 40)) > 0);
}

void ThemeTest::theSchemeOfTheSystemIsReadFromItsPalette()
{
    const QPalette before = QGuiApplication::palette();
    QApplication::setPalette(Theme(Scheme::Dark).getPalette());
    QCOMPARE(Theme::getSystemScheme(), Scheme::Dark);
    QApplication::setPalette(Theme(Scheme::Light).getPalette());
    QCOMPARE(Theme::getSystemScheme(), Scheme::Light);
    QApplication::setPalette(before);
}

void ThemeTest::applyStylesTheApplication()
{
    Theme theme(Scheme::Dark);
    theme.apply();
    QCOMPARE(QApplication::palette().color(QPalette::Base), theme.getColor("base"));
    QCOMPARE(qApp->styleSheet(), theme.getStyleSheet());
    theme.setScheme(Scheme::Light);
    theme.apply();
    QCOMPARE(QApplication::palette().color(QPalette::Base), theme.getColor("base"));
    qApp->setStyleSheet(QString());
}

void ThemeTest::coloursAndStyleSheetComeOneByOne()
{
    const Theme theme(Scheme::Dark);
    theme.applyColors();
    QCOMPARE(QApplication::palette().color(QPalette::Base), theme.getColor("base"));
    QVERIFY(qApp->styleSheet().isEmpty());
    theme.applyStyleSheet();
    QCOMPARE(qApp->styleSheet(), theme.getStyleSheet());
    qApp->setStyleSheet(QString());
}

void ThemeTest::aBoxOfMessagesDoesNotBreakAPath()
{
    const Theme theme(Scheme::Light);
    theme.apply();
    QMessageBox box;
    box.setText(QStringLiteral("Another one works in /var/tmp/kestoboard/bench."));
    box.show();
    const auto* const label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    QVERIFY(label != nullptr);
    QVERIFY(label->height() < 2 * label->fontMetrics().lineSpacing());
    qApp->setStyleSheet(QString());
}

void ThemeTest::anEnrichedListTellsItsDelegateOfThePointer()
{
    const Theme theme(Scheme::Light);
    QListWidget list;
    theme.enrich(&list);
    HoverDelegate delegate;
    list.setItemDelegate(&delegate);
    list.addItem(QStringLiteral("first"));
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    QVERIFY(!delegate.hovered);
    const QPoint place = list.visualItemRect(list.item(0)).center();
    QTest::mouseMove(list.windowHandle(), list.viewport()->mapTo(&list, place));
    QTRY_VERIFY(delegate.hovered);
}

void ThemeTest::anEnrichedComboBoxStaysAnOrdinaryOne()
{
    const Theme theme(Scheme::Light);
    QComboBox comboBox;
    comboBox.addItem(QStringLiteral("one"));
    theme.enrich(&comboBox);
    comboBox.addItem(QStringLiteral("two"));
    QSignalSpy chosen(&comboBox, QOverload<int>::of(&QComboBox::currentIndexChanged));
    comboBox.setCurrentText(QStringLiteral("two"));
    QCOMPARE(chosen.count(), 1);
    QCOMPARE(comboBox.count(), 2);
    QCOMPARE(comboBox.findText(QStringLiteral("one")), 0);
}

void ThemeTest::anEnrichedComboBoxForgetsTheWidthOfEntriesThatHaveGone()
{
    Theme theme(Theme::Scheme::Light);
    QComboBox comboBox;
    comboBox.setSizeAdjustPolicy(QComboBox::AdjustToContents);
    theme.enrich(&comboBox);
    comboBox.addItem("An entry with many words");
    // A layout asks for both.
    const int wide = qMax(comboBox.minimumSizeHint().width(), comboBox.sizeHint().width());
    comboBox.clear();
    comboBox.addItem("Short");
    QVERIFY(comboBox.sizeHint().width() < wide);
    QVERIFY(comboBox.minimumSizeHint().width() <= comboBox.sizeHint().width());
}

void ThemeTest::anEnrichedTreeStaysAnOrdinaryOneAndFollowsThePointer()
{
    const Theme theme(Scheme::Light);
    QTreeWidget tree;
    QVERIFY(!tree.viewport()->testAttribute(Qt::WA_Hover));
    theme.enrich(&tree);
    QVERIFY(tree.viewport()->testAttribute(Qt::WA_Hover));
    auto* const item = new QTreeWidgetItem(&tree, {QStringLiteral("one")});
    QSignalSpy chosen(&tree, &QTreeWidget::itemSelectionChanged);
    item->setSelected(true);
    QCOMPARE(chosen.count(), 1);
    QCOMPARE(tree.topLevelItemCount(), 1);
}

void ThemeTest::nothingToEnrichIsPassedOver()
{
    const Theme theme(Scheme::Light);
    theme.enrich(static_cast<QComboBox*>(nullptr));
    theme.enrich(static_cast<QListWidget*>(nullptr));
    theme.enrich(static_cast<QTreeWidget*>(nullptr));
    theme.enrich(static_cast<QTreeView*>(nullptr));
}

QTEST_MAIN(ThemeTest)

#include "tst_theme.moc"
