#pragma once

#include "factorymodeitemdelegate.h"
#include "lcd/factorymode/ilcdfactorymode.h"

#include <QtCore/QList>
#include <QtCore/QPair>

namespace LCD::FactoryModeImpl {

/// The factory menu: two lists of entries on one page, read from "factorymenu.xml", and the two test pages, made when
/// they are first asked for. The host owns it.
///
/// Threads: belongs to the GUI thread. Listeners for the test pattern may be registered and notified on any thread, and
/// are called on that of the notification.
class FactoryModeWidget : public FactoryMode::ILcdFactoryMode
{
    Q_OBJECT

public:
    explicit FactoryModeWidget(QWidget *parent);
    ~FactoryModeWidget() override;

    void enterFactoryMode() override;
    void exitFactoryMode() override;
    bool isFactoryMode() const override;
    void setFactoryModeData(const QString &key, const QVariant &value) override;
    void setFactoryModeSize(const QSize &size) override;
    void registerTestPatternDisplayCallback(const std::string &name,
                                            const std::function<void(int, int, int)> &callback) override;
    void notifyTestPatternChanged(int patternType, int patternIndex, int level) override;

    /// The keys of the button function test, each a key code and a name, in the order of the test.
    QList<QPair<int, QString>> getFactoryKeyCheckList() const;

    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    class Impl;
    Impl *d;
};

static_assert(sizeof(FactoryModeWidget) == sizeof(QWidget) + sizeof(void *), "a widget and one pointer");

}
