#pragma once

#include "mirel/component.h"

#include <QtCore/QList>
#include <QtCore/QString>

#include <functional>

class QWidget;

namespace panelhost {

/// The states of loading a component. Each state includes the previous ones.
enum class LoadState {
    None,
    Located,     ///< the file exists
    Opened,      ///< it is a library and is mapped and linked
    Checked,     ///< its records are valid and contain the component
    Initialised, ///< it has its host
    Created,     ///< the component's widget exists
};

/// A step of loading and what was found in it, as text.
struct LoadStep
{
    LoadState state;
    QString found;
};

/// Functions that are called while a component is loaded. Each can be empty.
struct LoadObserver
{
    std::function<void(const QString &call)> calling; ///< before a call into the library, such as "pluginfo()"
    std::function<void(const LoadStep &step)> reached;
};

/// What a library must have to be loaded as one kind of component.
struct ComponentKind
{
    const char *fileName;       ///< of the library beside the program
    const char *componentName;  ///< in its record
    const char *interfaceClass; ///< that the created widget inherits
    const char *tableSymbol;    ///< the exported table of components
};

/// "lcd.factory.mode", with an LCD::FactoryMode::ILcdFactoryMode.
extern const ComponentKind factoryModeComponent;
/// "lcd.repair.mode", with an LCD::RepairMode::ILcdRepairMode.
extern const ComponentKind repairModeComponent;

/// The library of a component, climbed up state by state. Each step returns false, with one
/// sentence in errorString() that names the file and what is wrong, and then no further step may be taken. What the
/// library throws is such a sentence; a library that crashes, hangs or ends the process is met by probeLoading().
/// A library that has been initialised stays mapped to the end of the process. GUI thread.
class ComponentLibrary
{
public:
    explicit ComponentLibrary(const QString &path, const ComponentKind &kind = factoryModeComponent);
    ~ComponentLibrary();
    ComponentLibrary(const ComponentLibrary &) = delete;
    ComponentLibrary &operator=(const ComponentLibrary &) = delete;

    void setObserver(const LoadObserver &observer) { m_observer = observer; }
    /// Sets the steps and the failure of loading the library in another process. Returns false.
    bool setFailure(const QList<LoadStep> &steps, const QString &failure);

    bool locate();
    bool open();
    bool check();
    bool initialise(void *host);
    bool create();
    /// Ends the widget with the component's `deletor`.
    void destroy();
    /// destroy(), and takes the host from the library. Libraries share their handle of the host: the others have none
    /// then either.
    void shutDown();

    LoadState state() const { return m_state; }
    QString errorString() const { return m_error; }
    QString path() const { return m_path; }
    QList<LoadStep> steps() const { return m_steps; }
    /// Valid from the state Checked on.
    const mirel::PluginInfo *pluginInfo() const { return m_info; }
    const mirel::ComponentInfo *componentInfo() const { return m_component; }
    /// From Created to destroy(). Inherits the interface of its kind.
    QWidget *widget() const { return m_widget; }

    static QString stateName(LoadState state);

private:
    bool fail(const QString &what);
    bool reach(LoadState state, const QString &found);
    void announce(const QString &call) const;
    /// Calls @p call. @p name is its name for the observer and in messages about its exceptions.
    template <class Call>
    bool callGuarded(const QString &name, Call &&call);
    bool resolve(const char *symbol, void **address);
    bool resolveFunction(const char *symbol, void **address);
    bool checkInfo();
    bool findComponent(mirel::ComponentInfo *const *table);
    bool checkComponent();

    const QString m_path;
    const ComponentKind &m_kind;
    LoadState m_state = LoadState::None;
    QString m_error;
    QList<LoadStep> m_steps;
    LoadObserver m_observer;
    void *m_handle = nullptr;
    void (*m_init)(void *) = nullptr;
    const mirel::PluginInfo *m_info = nullptr;
    const mirel::ComponentInfo *m_component = nullptr;
    QWidget *m_widget = nullptr;
};

/// The library of @p kind beside the program: in its directory, in "../lib", or where an installation puts it. The
/// place in "../lib" when there is none.
QString defaultComponentPath(const ComponentKind &kind = factoryModeComponent);

}
