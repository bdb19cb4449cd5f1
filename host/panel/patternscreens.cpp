#include "panel/patternscreens.h"

#include "device/device.h"
#include "panel/screenview.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>
#include <QtGui/QScreen>
#include <QtWidgets/QWidget>

namespace panelhost {

namespace {

constexpr int PatternInterval = 33; // real milliseconds

// Returns nullptr if the output isn't connected.
QScreen *findOutput(const QString &name)
{
    const auto screens = QGuiApplication::screens();
    for (QScreen *screen : screens) {
        if (screen->name() == name)
            return screen;
    }
    return nullptr;
}

bool isSame(const TestPattern &left, const TestPattern &right)
{
    return left.type == right.type && left.index == right.index && left.level == right.level;
}

}

/// A window that fills one output. It never takes the focus from the LCD.
class PatternWindow : public QWidget
{
public:
    explicit PatternWindow(const QString &output) : m_output(output)
    {
        setObjectName(QStringLiteral("pattern-") + output);
        setWindowFlags(Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus);
        setAttribute(Qt::WA_ShowWithoutActivating);
        setAttribute(Qt::WA_OpaquePaintEvent);
        setCursor(Qt::BlankCursor);
    }

    void setPattern(const TestPattern &pattern)
    {
        QScreen *screen = hasTestPattern(pattern) ? findOutput(m_output) : nullptr;
        if (!screen)
            return hide();
        if (!isSame(pattern, m_pattern))
            update();
        m_pattern = pattern;
        setGeometry(screen->geometry());
        if (!isVisible())
            showFullScreen();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        drawTestPattern(painter, rect(), m_pattern);
    }

private:
    const QString m_output;
    TestPattern m_pattern;
};

PatternScreens::PatternScreens(const Device &device, const QVector<ScreenConfiguration> &screens) : m_device(device)
{
    for (const ScreenConfiguration &screen : screens) {
        if (!screen.output.isEmpty())
            m_windows.push_back(std::make_unique<PatternWindow>(screen.output));
    }
    if (m_windows.empty())
        return;
    QObject::connect(&m_refresh, &RealTimeTimer::timeout, &m_refresh, [this] { refresh(); });
    m_refresh.start(PatternInterval);
}

PatternScreens::~PatternScreens() = default;

void PatternScreens::refresh()
{
    const TestPattern pattern = m_device.state().pattern;
    for (const auto &window : m_windows)
        window->setPattern(pattern);
}

}
