#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtWidgets/QWidget>

#include <functional>
#include <string>

namespace LCD::FactoryMode {

/// The factory mode as its host drives it: the component "lcd.factory.mode", offered back to the component's own
/// library as the service "lcdFactoryModeWidget". All operations belong on the GUI thread. The order of the virtual
/// operations is part of the interface.
class ILcdFactoryMode : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;
    ~ILcdFactoryMode() override = default;

    /// Shows the menu at the top of its first level.
    virtual void enterFactoryMode() = 0;
    /// Hides the widget. Pages, lists and rows stay as they are.
    virtual void exitFactoryMode() = 0;
    virtual bool isFactoryMode() const = 0;
    /// "menuConfigPath": a directory, or a file in it, from which the two configuration files are read.
    virtual void setFactoryModeData(const QString &key, const QVariant &value)
    {
        Q_UNUSED(key)
        Q_UNUSED(value)
    }
    /// Size in pixels; ignored unless both sides are greater than 0.
    virtual void setFactoryModeSize(const QSize &size) { Q_UNUSED(size) }
    /// Stores @p callback (pattern type, pattern index, level) under @p name, in the place of an earlier one.
    virtual void registerTestPatternDisplayCallback(const std::string &name,
                                                    const std::function<void(int, int, int)> &callback) = 0;
    /// Calls every registered callback, in ascending order of name, on the caller's thread.
    virtual void notifyTestPatternChanged(int patternType, int patternIndex, int level) = 0;

Q_SIGNALS:
    /// The operator opened a menu entry that the host shows in a container of its own.
    void requestShowContainer(const QString &containerKey);
    /// The operator asked to leave; the host answers with exitFactoryMode().
    void requestExitFactoryMode();
};

static_assert(sizeof(ILcdFactoryMode) == sizeof(QWidget), "the interface holds no data");

}
