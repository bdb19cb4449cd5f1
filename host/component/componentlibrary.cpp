#include "component/componentlibrary.h"

#include "component/elffile.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtWidgets/QWidget>

#include <cstring>
#include <dlfcn.h>
#include <elf.h>
#include <exception>
#include <link.h>

namespace panelhost {

namespace {

constexpr char interfaceVersion[] = "0.1";

QString text(const char *value)
{
    return value ? QString::fromUtf8(value) : QStringLiteral("(null)");
}

// A record's text on one line: meta data may end in CR LF.
QString shown(const char *value)
{
    return QStringLiteral("\"%1\"").arg(text(value).trimmed());
}

// What the linker says, without the path that it begins with.
QString linkerError(const QString &path)
{
    QString error = text(dlerror());
    const QString prefix = path + QStringLiteral(": ");
    return error.startsWith(prefix) ? error.mid(prefix.size()) : error;
}

}

const ComponentKind factoryModeComponent = {"liblcdfactorymodeimpl.so", "lcd.factory.mode",
                                            "LCD::FactoryMode::ILcdFactoryMode",
                                            "lcdfactorymodeimpl_mirel_componentInfoTable"};
const ComponentKind repairModeComponent = {"librepairpages.so", "lcd.repair.mode", "LCD::RepairMode::ILcdRepairMode",
                                           "repairpages_mirel_componentInfoTable"};

ComponentLibrary::ComponentLibrary(const QString &path, const ComponentKind &kind)
    : m_path(QFileInfo(path).absoluteFilePath()), m_kind(kind)
{
}

ComponentLibrary::~ComponentLibrary()
{
    shutDown();
    if (m_handle && m_state < LoadState::Initialized)
        dlclose(m_handle);
}

bool ComponentLibrary::fail(const QString &what)
{
    m_error = QStringLiteral("%1: %2").arg(m_path, what);
    return false;
}

bool ComponentLibrary::reach(LoadState state, const QString &found)
{
    m_state = state;
    m_steps << LoadStep{state, found};
    if (m_observer.reached)
        m_observer.reached(m_steps.constLast());
    return true;
}

bool ComponentLibrary::setFailure(const QList<LoadStep> &steps, const QString &failure)
{
    m_steps = steps;
    return fail(failure);
}

void ComponentLibrary::announce(const QString &call) const
{
    if (m_observer.calling)
        m_observer.calling(call);
}

template <class Call>
bool ComponentLibrary::callGuarded(const QString &name, Call &&call)
{
    announce(name);
    try {
        call();
        return true;
    } catch (const std::exception &exception) {
        return fail(QStringLiteral("%1 threw: %2.").arg(name, text(exception.what())));
    } catch (...) {
        return fail(QStringLiteral("%1 threw an exception.").arg(name));
    }
}

bool ComponentLibrary::locate()
{
    const QFileInfo file(m_path);
    if (!file.exists())
        return fail(QStringLiteral("there is no such file."));
    if (!file.isFile())
        return fail(QStringLiteral("this is not a file."));
    return reach(LoadState::Located, QStringLiteral("%1, %2 bytes").arg(m_path).arg(file.size()));
}

bool ComponentLibrary::open()
{
    if (isElfTruncated(m_path))
        return fail(QStringLiteral("can't be opened as a library: the file is truncated."));
    announce(QStringLiteral("opening it"));
    m_handle = dlopen(m_path.toLocal8Bit().constData(), RTLD_NOW | RTLD_LOCAL);
    if (!m_handle)
        return fail(QStringLiteral("can't be opened as a library: %1.").arg(linkerError(m_path)));
    return reach(LoadState::Opened, QStringLiteral("a shared library, all its symbols bound"));
}

bool ComponentLibrary::resolve(const char *symbol, void **address)
{
    *address = dlsym(m_handle, symbol);
    return *address || fail(QStringLiteral("has no symbol \"%1\".").arg(text(symbol)));
}

// The symbol table of the library has the type of each symbol.
bool ComponentLibrary::resolveFunction(const char *symbol, void **address)
{
    if (!resolve(symbol, address))
        return false;
    Dl_info info;
    ElfW(Sym) *entry = nullptr;
    const bool isKnown = dladdr1(*address, &info, reinterpret_cast<void **>(&entry), RTLD_DL_SYMENT) != 0 && entry;
    return !isKnown || ELF64_ST_TYPE(entry->st_info) != STT_OBJECT
        || fail(QStringLiteral("the symbol \"%1\" is data, expected a function.").arg(text(symbol)));
}

bool ComponentLibrary::check()
{
    void *infoFunction = nullptr;
    void *initFunction = nullptr;
    void *table = nullptr;
    if (!resolveFunction("pluginfo", &infoFunction) || !resolveFunction("pluginit", &initFunction)
        || !resolve(m_kind.tableSymbol, &table))
        return false;
    m_init = reinterpret_cast<void (*)(void *)>(initFunction);
    const auto askInfo = [&] { m_info = reinterpret_cast<const mirel::PluginInfo *(*)()>(infoFunction)(); };
    if (!callGuarded(QStringLiteral("pluginfo()"), askInfo))
        return false;
    announce(QStringLiteral("reading its records"));
    if (!checkInfo() || !findComponent(m_info->componentInfoTable) || !checkComponent())
        return false;
    return reach(LoadState::Checked,
                 QStringLiteral("plugin %1 version %2, interface %3, component %4")
                     .arg(shown(m_info->pluginName), shown(m_info->pluginVersion), shown(m_info->interfaceVersion),
                          shown(m_component->componentName)));
}

bool ComponentLibrary::checkInfo()
{
    if (!m_info)
        return fail(QStringLiteral("pluginfo() returns no record."));
    if (!m_info->interfaceVersion || std::strcmp(m_info->interfaceVersion, interfaceVersion) != 0)
        return fail(QStringLiteral("has interface version %1, expected \"%2\".")
                        .arg(shown(m_info->interfaceVersion), text(interfaceVersion)));
    if (!m_info->componentInfoTable)
        return fail(QStringLiteral("has no component table."));
    if (!*m_info->componentInfoTable)
        return fail(QStringLiteral("has a component table with no entry."));
    return true;
}

bool ComponentLibrary::findComponent(mirel::ComponentInfo *const *table)
{
    QStringList names;
    for (; *table; ++table) {
        const char *name = (*table)->componentName;
        if (name && std::strcmp(name, m_kind.componentName) == 0) {
            m_component = *table;
            return true;
        }
        names << shown(name);
    }
    return fail(QStringLiteral("has no component \"%1\", only %2.")
                    .arg(text(m_kind.componentName), names.join(QStringLiteral(", "))));
}

bool ComponentLibrary::checkComponent()
{
    if (!m_component->creator)
        return fail(QStringLiteral("the component \"%1\" has no creator.").arg(text(m_kind.componentName)));
    if (!m_component->deletor)
        return fail(QStringLiteral("the component \"%1\" has no deletor.").arg(text(m_kind.componentName)));
    return true;
}

bool ComponentLibrary::initialize(void *host)
{
    if (!callGuarded(QStringLiteral("pluginit()"), [&] { m_init(host); }))
        return false;
    return reach(LoadState::Initialized, QStringLiteral("pluginit() has the host"));
}

bool ComponentLibrary::create()
{
    void *object = nullptr;
    const QString creator = QStringLiteral("the creator of \"%1\"").arg(text(m_kind.componentName));
    if (!callGuarded(creator, [&] { object = m_component->creator(); }))
        return false;
    if (!object)
        return fail(creator + QStringLiteral(" returned no object."));
    // The record doesn't contain the class; the meta-object of the widget does. The first base of each interface is
    // QWidget.
    auto *widget = static_cast<QWidget *>(object);
    const QString className = text(widget->metaObject()->className());
    if (!widget->inherits(m_kind.interfaceClass)) {
        m_component->deletor(object);
        return fail(
            QStringLiteral("%1 created a %2, expected a %3.").arg(creator, className, text(m_kind.interfaceClass)));
    }
    m_widget = widget;
    return reach(LoadState::Created, className);
}

void ComponentLibrary::destroy()
{
    if (m_widget)
        m_component->deletor(static_cast<void *>(std::exchange(m_widget, nullptr)));
}

void ComponentLibrary::shutDown()
{
    destroy();
    if (m_state >= LoadState::Initialized)
        m_init(nullptr);
}

QString ComponentLibrary::stateName(LoadState state)
{
    static const char *const names[] = {"none", "located", "opened", "checked", "initialised", "created"};
    return QString::fromLatin1(names[static_cast<int>(state)]);
}

QString defaultComponentPath(const ComponentKind &kind)
{
    const QString program = QCoreApplication::applicationDirPath();
    const QString name = QString::fromLatin1(kind.fileName);
    const QStringList directories = {program, program + QStringLiteral("/../lib")};
    for (const QString &directory : directories) {
        const QFileInfo file(directory + QLatin1Char('/') + name);
        if (file.exists())
            return QFileInfo(file.absoluteFilePath()).canonicalFilePath();
    }
    return QFileInfo(directories.at(1) + QLatin1Char('/') + name).absoluteFilePath();
}

}
