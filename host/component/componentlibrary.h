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
    Initialized, ///< it has its host
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

/// A kind of component: what its library must contain.
struct ComponentKind
{
    const char *fileName;       ///< of the library next to the program
    const char *componentName;  ///< in its record
    const char *interfaceClass; ///< that the created widget inherits
    const char *tableSymbol;    ///< the exported table of components
};

/// "lcd.factory.mode", with an LCD::FactoryMode::ILcdFactoryMode.
extern const ComponentKind factoryModeComponent;
/// "lcd.repair.mode", with an LCD::RepairMode::ILcdRepairMode.
extern const ComponentKind repairModeComponent;

/// The library of a component, loaded state by state. A step that fails returns false and sets errorString() to a
/// sentence that names the file and what is wrong; no further step can be taken then. Exceptions of the library are
/// such errors. Use probeLoading() first for a library that could crash, hang or end the process. A library that was
/// initialized stays mapped until the process ends. GUI thread.
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
    bool initialize(void *host);
    bool create();
    /// Deletes the widget with the component's `deletor`.
    void destroy();
    /// Calls destroy() and sets the library's host to nullptr. All loaded libraries share this pointer, so the others
    /// have no host either after that.
    void shutDown();

    LoadState state() const { return m_state; }
    QString errorString() const { return m_error; }
    QString path() const { return m_path; }
    QList<LoadStep> steps() const { return m_steps; }
    /// Valid from the state Checked on.
    const mirel::PluginInfo *pluginInfo() const { return m_info; }
    const mirel::ComponentInfo *componentInfo() const { return m_component; }
    /// Valid in the state Created until destroy(); nullptr otherwise. Inherits the interface of its kind.
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

/// Returns the library of @p kind next to the program: in its directory, in "../lib" or in the directory of an
/// installation. Returns the path in "../lib" if there is none.
QString defaultComponentPath(const ComponentKind &kind = factoryModeComponent);

}
