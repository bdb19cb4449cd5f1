#pragma once
#include <QSize>
#include <QString>
#include <QVariant>
#include <QWidget>
#include <functional>
#include <string>
namespace LCD {
namespace FactoryMode {
class ILcdFactoryMode : public QWidget
{
    Q_OBJECT
public:
    explicit ILcdFactoryMode(QWidget *parent = nullptr) : QWidget(parent) {}
    virtual ~ILcdFactoryMode() {}
    virtual void enterFactoryMode() = 0;
    virtual void exitFactoryMode() = 0;
    virtual bool isFactoryMode() const = 0;
    virtual void setFactoryModeData(const QString &, const QVariant &) {}
    virtual void setFactoryModeSize(const QSize &) {}
    virtual void registerTestPatternDisplayCallback(const std::string &name,
                                                    const std::function<void(int, int, int)> &callback) = 0;
    virtual void notifyTestPatternChanged(int patternType, int patternIndex, int level) = 0;
Q_SIGNALS:
    void requestShowContainer(const QString &containerKey);
    void requestExitFactoryMode();
};
}
}
