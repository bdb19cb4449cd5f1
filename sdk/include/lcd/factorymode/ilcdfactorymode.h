#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtWidgets/QWidget>

#include <functional>
#include <string>

namespace LCD::FactoryMode {

/// The interface of the factory mode widget for its host. The component "lcd.factory.mode" creates the widget, and the
/// host provides it as the service "lcdFactoryModeWidget", too. Call all operations on the GUI thread. The order of the
/// virtual operations is part of the interface.
class ILcdFactoryMode : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;
    ~ILcdFactoryMode() override = default;

    /// Shows the menu at the top of its first level.
    virtual void enterFactoryMode() = 0;
    /// Hides the widget. Neither the pages nor the selected rows change, and a running test continues.
    virtual void exitFactoryMode() = 0;
    /// Returns true from enterFactoryMode() to exitFactoryMode().
    virtual bool isFactoryMode() const = 0;
    /// Sets an option. The only @p key is "menuConfigPath": @p value is the directory of the two configuration files,
    /// or a file in it. Both files are read at once.
    virtual void setFactoryModeData(const QString &key, const QVariant &value)
    {
        Q_UNUSED(key)
        Q_UNUSED(value)
    }
    /// Sets the size in pixels. Does nothing unless width and height are greater than 0.
    virtual void setFactoryModeSize(const QSize &size) { Q_UNUSED(size) }
    /// Registers @p callback (pattern type, pattern index, level) under @p name and replaces an earlier one. Callbacks
    /// can't be unregistered.
    virtual void registerTestPatternDisplayCallback(const std::string &name,
                                                    const std::function<void(int, int, int)> &callback) = 0;
    /// Calls all registered callbacks on the caller's thread, in ascending order of their names.
    virtual void notifyTestPatternChanged(int patternType, int patternIndex, int level) = 0;

Q_SIGNALS:
    /// Emitted when the operator opens a menu entry that isn't a test page. The host shows the container.
    void requestShowContainer(const QString &containerKey);
    /// Emitted when the operator goes back from the first menu level. The host calls exitFactoryMode().
    void requestExitFactoryMode();
};

static_assert(sizeof(ILcdFactoryMode) == sizeof(QWidget), "the interface has no data members");

}
