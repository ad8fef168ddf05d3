#include <foundation/Theme.h>

#include <foundation/ThemeIcon.h>

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QListView>
#include <QListWidget>
#include <QRegularExpression>
#include <QStyleFactory>
#include <QStyledItemDelegate>
#include <QTreeView>
#include <QTreeWidget>

#include <array>

namespace
{

struct NamedColor {
    const char* name;
    const char* light;
    const char* dark;
};

constexpr NamedColor namedColors[] = {
    {"window", "#f4f6f8", "#20252b"},       {"base", "#ffffff", "#171b20"},
    {"background", "#eef2f6", "#272d35"},   {"button", "#ffffff", "#2b323a"},
    {"button_hover", "#e6edf4", "#343d47"}, {"button_checked", "#d5e5f6", "#234162"},
    {"border", "#ccd4dd", "#3a434d"},       {"frame", "#87939f", "#75818e"},
    {"text", "#1d2733", "#e6eaee"},         {"text_light", "#515d6b", "#b2bcc7"},
    {"disabled", "#66717e", "#8f9aa6"},     {"accent", "#155fa8", "#6db3f2"},
    {"selection", "#1a67b3", "#2a65a0"},    {"selection_text", "#ffffff", "#ffffff"},
    {"tooltip", "#26303b", "#343d47"},      {"tooltip_text", "#f4f6f8", "#e6eaee"},
    {"icon", "#36424f", "#ccd4dc"},         {"match", "#ffe08a", "#5c4a10"},
    {"error", "#b3261e", "#ff8f85"},        {"warning", "#855000", "#f0b45a"},
    {"success", "#1b7033", "#74cf8f"},
};

/// The colours that the drawings are made in: those of the light scheme, exchanged in the dark one.
constexpr const char* inkNames[] = {"icon", "accent", "error", "warning", "success"};

const QString resourceFolder = QStringLiteral(":/kestoboard/theme/");

QByteArray readResource(const QString& name)
{
    QFile file(resourceFolder + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString getSchemeName(Orvex::Theme::Scheme scheme)
{
    return scheme == Orvex::Theme::Scheme::Dark ? QStringLiteral("dark") : QStringLiteral("light");
}

} // namespace

namespace Orvex
{

Theme* theme = nullptr;

Theme::Theme(Scheme initialScheme)
    : scheme(initialScheme)
    , inks(std::make_shared<ThemeInks>())
{
    fillColors();
    loadIcons();
}

Theme::~Theme() = default;

Theme::Scheme Theme::getSystemScheme()
{
    const QPalette palette = QGuiApplication::palette();
    const bool dark = palette.color(QPalette::WindowText).lightness() >
                      palette.color(QPalette::Window).lightness();
    return dark ? Scheme::Dark : Scheme::Light;
}

Theme::Scheme Theme::getScheme() const
{
    return scheme;
}

void Theme::setScheme(Scheme newScheme)
{
    if (newScheme == scheme) {
        return;
    }
    scheme = newScheme;
    fillColors();
    emit schemeChanged();
}

const QIcon& Theme::getIcon(const std::string& name) const
{
    static const QIcon none;
    const auto found = icons.find(name);
    return found == icons.end() ? none : found->second;
}

const QColor& Theme::getColor(const std::string& name) const
{
    return getNamed(name).color;
}

const QString& Theme::getColorName(const std::string& name) const
{
    return getNamed(name).name;
}

const Theme::Color& Theme::getNamed(const std::string& name) const
{
    const auto found = colors.find(name);
    return found == colors.end() ? colors.at("text") : found->second;
}

void Theme::fillColors()
{
    for (const NamedColor& named : namedColors) {
        const char* value = scheme == Scheme::Dark ? named.dark : named.light;
        Color& color = colors[named.name];
        color.name = QString::fromLatin1(value);
        color.color = QColor(color.name);
    }
    inks->name = getSchemeName(scheme);
    for (const NamedColor& named : namedColors) {
        for (const char* ink : inkNames) {
            if (std::string(ink) == named.name) {
                inks->inks[QString::fromLatin1(named.light)] = getColorName(ink);
            }
        }
    }
}

void Theme::loadIcons()
{
    const QDir folder(resourceFolder + QStringLiteral("icons"));
    const QFileInfoList drawings = folder.entryInfoList({QStringLiteral("*.svg")}, QDir::Files);
    for (const QFileInfo& drawing : drawings) {
        const QString name = drawing.completeBaseName();
        const QByteArray svg = readResource(QStringLiteral("icons/") + drawing.fileName());
        icons[name.toStdString()] = QIcon(new ThemeIcon(name, svg, inks));
    }
}

QPalette Theme::getPalette() const
{
    const std::pair<QPalette::ColorRole, const char*> roles[] = {
        {QPalette::Window, "window"},
        {QPalette::WindowText, "text"},
        {QPalette::Base, "base"},
        {QPalette::AlternateBase, "background"},
        {QPalette::Text, "text"},
        {QPalette::PlaceholderText, "text_light"},
        {QPalette::Button, "button"},
        {QPalette::ButtonText, "text"},
        {QPalette::BrightText, "error"},
        {QPalette::Highlight, "selection"},
        {QPalette::HighlightedText, "selection_text"},
        {QPalette::ToolTipBase, "tooltip"},
        {QPalette::ToolTipText, "tooltip_text"},
        {QPalette::Link, "accent"},
        {QPalette::LinkVisited, "accent"},
        {QPalette::Light, "button_hover"},
        {QPalette::Midlight, "button_hover"},
        {QPalette::Mid, "border"},
        {QPalette::Dark, "frame"},
        {QPalette::Shadow, "frame"},
    };
    QPalette palette;
    for (const auto& [role, name] : roles) {
        palette.setColor(role, getColor(name));
    }
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, getColor("disabled"));
    }
    return palette;
}

QString Theme::getStyleSheet() const
{
    static const QRegularExpression reference(QStringLiteral("@([a-z_]+)"));
    const QString sheet = QString::fromUtf8(readResource(QStringLiteral("style.qss")));
    QString styled;
    int copied = 0;
    for (auto found = reference.globalMatch(sheet); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        const QString name = match.captured(1);
        styled += sheet.midRef(copied, match.capturedStart() - copied);
        styled += name == QLatin1String("scheme") ? getSchemeName(scheme)
                                                  : getColorName(name.toStdString());
        copied = match.capturedEnd();
    }
    return styled + sheet.midRef(copied);
}

void Theme::apply() const
{
    applyColors();
    applyStyleSheet();
}

void Theme::applyColors() const
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(getPalette());
}

void Theme::applyStyleSheet() const
{
    qApp->setStyleSheet(getStyleSheet());
}

void Theme::enrich(QComboBox* comboBox) const
{
    if (comboBox == nullptr) {
        return;
    }
    // A view and a delegate of its own: the style's own popup does not follow the style sheet.
    comboBox->setView(new QListView(comboBox));
    comboBox->setItemDelegate(new QStyledItemDelegate(comboBox));
    // Otherwise the toolkit goes on asking for the room of the longest entry that there ever was.
    comboBox->setMinimumContentsLength(1);
    comboBox->setAttribute(Qt::WA_Hover);
    comboBox->view()->viewport()->setAttribute(Qt::WA_Hover);
}

namespace
{

/// Delegates learn of the pointer only where the viewport tracks it.
void enrichView(QAbstractItemView* view)
{
    view->viewport()->setAttribute(Qt::WA_Hover);
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setTextElideMode(Qt::ElideMiddle);
}

} // namespace

void Theme::enrich(QListWidget* list) const
{
    if (list != nullptr) {
        enrichView(list);
    }
}

void Theme::enrich(QTreeWidget* tree) const
{
    enrich(static_cast<QTreeView*>(tree));
}

void Theme::enrich(QTreeView* tree) const
{
    if (tree != nullptr) {
        enrichView(tree);
        tree->setUniformRowHeights(true);
    }
}

} // namespace Orvex
