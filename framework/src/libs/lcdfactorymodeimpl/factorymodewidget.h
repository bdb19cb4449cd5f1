#pragma once

#include "factorymodeitemdelegate.h"
#include "lcd/factorymode/ilcdfactorymode.h"

#include <QtCore/QList>
#include <QtCore/QPair>

namespace LCD::FactoryModeImpl {

/// The factory menu: two lists with the entries of "factorymenu.xml", and the two test pages, which it creates on first
/// use. The host owns it.
///
/// Threads: use it on the GUI thread. Only registerTestPatternDisplayCallback() and notifyTestPatternChanged() are
/// thread-safe; the callbacks are called on the thread of the notification.
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

    /// Returns the key check list: the hal key and the name of each key, in the order of the key walk.
    QList<QPair<int, QString>> getFactoryKeyCheckList() const;

    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    class Impl;
    Impl *d;
};

static_assert(sizeof(FactoryModeWidget) == sizeof(QWidget) + sizeof(void *), "a widget and one pointer");

}
