#include "touchtest.h"

#include "owntest.h"
#include "touchcells.h"

namespace LCD::RepairPages {

namespace {

class TouchTest : public OwnTest
{
public:
    void start() override
    {
        m_cells.clear();
        OwnTest::start();
    }

    QVector<PageLine> lines() const override { return {counted("RepairTouchStep"), {text("RepairTouchKeys")}}; }
    QVector<PageLine> remarks() const override
    {
        return state() == TestState::Failed ? QVector<PageLine>{counted("RepairTouchCells")} : QVector<PageLine>();
    }

    const TouchCells *cells() const override { return &m_cells; }
    void touch(const QPointF &from, const QPointF &to) override
    {
        m_cells.touch(from, to);
        if (m_cells.areAllTouched())
            setPass();
    }

private:
    PageLine counted(const char *key) const
    {
        return {QStringLiteral("%1 (%2/%3)").arg(text(key)).arg(m_cells.touchedCount()).arg(TouchCells::Count)};
    }

    TouchCells m_cells;
};

}

std::unique_ptr<PageTest> makeTouchTest()
{
    return std::make_unique<TouchTest>();
}

}
