#ifndef APP_RESTINGCURSOR_H
#define APP_RESTINGCURSOR_H

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <chrono>

namespace Kestoboard
{

/// Has the cursor of a text field stand still once nobody has touched keyboard or mouse for a
/// while: to blink paints a part of the window twice a second, also while nobody is there. The next
/// touch lets it blink again, as the desktop wishes.
class RestingCursor : public QObject
{
    Q_OBJECT

public:
    /// How long nobody has to touch anything, as desktops have it.
    static constexpr std::chrono::milliseconds usualPatience{10000};

    RestingCursor(std::chrono::milliseconds untilRest, QObject* parent);
    /// Lets it blink.
    ~RestingCursor() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void onTouched();
    void restUnlessTouched();

    const std::chrono::milliseconds patience;
    QElapsedTimer sinceTouch;
    QTimer timer;
};

} // namespace Kestoboard

#endif
