#include "controltests.h"

#include "owntest.h"

#include <algorithm>

namespace LCD::RepairPages {

namespace {

/// A movement of the knob or of the joystick, as the panel reports it, and how often the operator must make it.
struct Movement
{
    Qt::Key key;
    int count;
    const char *text; ///< text key
};

// One step of the knob may be due to a bouncing contact, so each direction needs several.
const QVector<Movement> knobMovements = {
    {Qt::Key_Up, 3, "RepairKnobLeft"},
    {Qt::Key_Down, 3, "RepairKnobRight"},
    {Qt::Key_Return, 1, "RepairKnobPress"},
};

const QVector<Movement> joystickMovements = {
    {Qt::Key_Up, 1, "RepairJoystickUp"},        {Qt::Key_Down, 1, "RepairJoystickDown"},
    {Qt::Key_Left, 1, "RepairJoystickLeft"},    {Qt::Key_Right, 1, "RepairJoystickRight"},
    {Qt::Key_Return, 1, "RepairJoystickPress"},
};

// The frame takes these keys for a press, too.
int movementKey(int qtKey)
{
    return qtKey == Qt::Key_Enter || qtKey == Qt::Key_Space ? int(Qt::Key_Return) : qtKey;
}

class ControlTest : public OwnTest
{
public:
    explicit ControlTest(const QVector<Movement> &movements) : m_movements(movements), m_counts(movements.size()) {}

    void start() override;
    QVector<PageLine> lines() const override;
    QVector<PageLine> remarks() const override;
    bool takesKey(int qtKey) const override { return indexOf(qtKey) >= 0; }
    void pressKey(int qtKey) override;

private:
    int indexOf(int qtKey) const;
    bool isDone(int index) const { return m_counts.at(index) >= m_movements.at(index).count; }
    PageLine line(int index) const;

    const QVector<Movement> m_movements;
    QVector<int> m_counts; ///< movements of each kind since the start
};

void ControlTest::start()
{
    m_counts.fill(0);
    OwnTest::start();
}

int ControlTest::indexOf(int qtKey) const
{
    const auto found = std::find_if(m_movements.begin(), m_movements.end(),
                                    [key = movementKey(qtKey)](const Movement &each) { return each.key == key; });
    return found == m_movements.end() ? -1 : static_cast<int>(found - m_movements.begin());
}

void ControlTest::pressKey(int qtKey)
{
    const int index = indexOf(qtKey);
    m_counts[index] = std::min(m_counts.at(index) + 1, m_movements.at(index).count);
    bool areAllDone = true;
    for (int each = 0; each < m_movements.size(); ++each)
        areAllDone = areAllDone && isDone(each);
    if (areAllDone)
        setPass();
}

PageLine ControlTest::line(int index) const
{
    const Movement &movement = m_movements.at(index);
    QString words = text(movement.text);
    if (movement.count > 1)
        words += QStringLiteral(" (%1/%2)").arg(m_counts.at(index)).arg(movement.count);
    return {words, Qt::white, isDone(index) ? PageLine::Mark::Pass : PageLine::Mark::None};
}

QVector<PageLine> ControlTest::lines() const
{
    QVector<PageLine> lines;
    for (int index = 0; index < m_movements.size(); ++index)
        lines << line(index);
    return lines;
}

// What was missing when the test failed.
QVector<PageLine> ControlTest::remarks() const
{
    QVector<PageLine> missing;
    for (int index = 0; index < m_movements.size() && state() == TestState::Failed; ++index) {
        if (!isDone(index))
            missing << PageLine{line(index).text, notPassColor(), PageLine::Mark::NotPass};
    }
    return missing;
}

}

std::unique_ptr<PageTest> makeKnobTest()
{
    return std::make_unique<ControlTest>(knobMovements);
}

std::unique_ptr<PageTest> makeJoystickTest()
{
    return std::make_unique<ControlTest>(joystickMovements);
}

}
