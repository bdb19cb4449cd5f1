// A library to preload into the tests of the build with the thread sanitizer. Qt isn't instrumented. So the sanitizer
// doesn't see what Qt does to make threads wait for each other, and reports races where there are none. This library
// tells it
//   - when a QMutex is locked and unlocked
//   - that an event is posted before it is delivered
//   - that a signal is emitted, or a function is invoked, before a queued call delivers it
// In a process without the sanitizer it does nothing.

#include <QtCore/QCoreApplication>
#include <QtCore/QMutex>
#include <QtCore/private/qobject_p.h>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

#pragma weak __tsan_acquire
#pragma weak __tsan_release
#pragma weak __tsan_mutex_destroy
#pragma weak __tsan_mutex_pre_lock
#pragma weak __tsan_mutex_post_lock
#pragma weak __tsan_mutex_pre_unlock
#pragma weak __tsan_mutex_post_unlock
// A process without the sanitizer may be one without Qt.
#pragma weak _ZNK11QBasicMutex11isRecursiveEv

namespace {

/// Returns Qt's own function of this name.
template <class Function>
Function *qtFunction(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

bool hasSanitizer()
{
    return __tsan_acquire != nullptr;
}

/// Qt calls this with the receiver and the event before an event is delivered.
bool beforeDelivery(void **data)
{
    const auto *event = static_cast<const QEvent *>(data[1]);
    __tsan_acquire(data[1]);
    if (event->type() == QEvent::MetaCall) {
        const QObject *sender = static_cast<const QAbstractMetaCallEvent *>(event)->sender();
        __tsan_acquire(sender ? const_cast<QObject *>(sender) : data[0]);
    }
    return false;
}

/// The calls that post events on @p object, or a call to it, come before the events that are delivered from now on.
void beforePosting(void *object)
{
    if (!hasSanitizer())
        return;
    static const bool registered = qtFunction<bool(QInternal::Callback, qInternalCallback)>(
        "_ZN9QInternal16registerCallbackENS_8CallbackEPFbPPvE")(QInternal::EventNotifyCallback, beforeDelivery);
    if (registered)
        __tsan_release(object);
}

/// A function that is invoked on another thread. The last of the two threads that have done with it deletes it; Qt
/// counts its users where the sanitizer doesn't see it.
class InvokedFunction final : public QtPrivate::QSlotObjectBase
{
public:
    explicit InvokedFunction(QtPrivate::QSlotObjectBase *function) : QSlotObjectBase(&handle), m_function(function)
    {
        __tsan_release(this);
    }

private:
    static void handle(int operation, QSlotObjectBase *self, QObject *receiver, void **arguments, bool *result)
    {
        auto *invoked = static_cast<InvokedFunction *>(self);
        switch (operation) {
        case Call:
            invoked->m_function->call(receiver, arguments);
            __tsan_release(self);
            break;
        case Destroy:
            __tsan_acquire(self);
            invoked->m_function->destroyIfLastRef();
            delete invoked;
            break;
        case Compare:
            *result = invoked->m_function->compare(arguments);
            break;
        default:
            break;
        }
    }

    QtPrivate::QSlotObjectBase *const m_function;
};

/// Locks @p mutex with Qt's function. @p tryFlag is 0 if it waits until it succeeds.
template <class Lock>
bool lockVisibly(QMutex *mutex, unsigned tryFlag, const Lock &lock)
{
    if (!hasSanitizer())
        return lock();
    const unsigned flags = tryFlag | (mutex->isRecursive() ? __tsan_mutex_write_reentrant : 0);
    __tsan_mutex_pre_lock(mutex, flags);
    const bool locked = lock();
    __tsan_mutex_post_lock(mutex, flags | (locked ? 0 : __tsan_mutex_try_lock_failed), 0);
    return locked;
}

}

void QMutex::lock() QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto qtLock = qtFunction<void(QMutex *)>("_ZN6QMutex4lockEv");
    lockVisibly(this, 0, [this] {
        qtLock(this);
        return true;
    });
}

bool QMutex::tryLock(int timeout) QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto qtTryLock = qtFunction<bool(QMutex *, int)>("_ZN6QMutex7tryLockEi");
    return lockVisibly(this, __tsan_mutex_try_lock, [this, timeout] { return qtTryLock(this, timeout); });
}

void QMutex::unlock() noexcept
{
    static const auto qtUnlock = qtFunction<void(QMutex *)>("_ZN6QMutex6unlockEv");
    if (hasSanitizer())
        __tsan_mutex_pre_unlock(this, 0);
    qtUnlock(this);
    if (hasSanitizer())
        __tsan_mutex_post_unlock(this, 0);
}

QMutex::~QMutex()
{
    static const auto qtDestroy = qtFunction<void(QMutex *)>("_ZN6QMutexD1Ev");
    if (hasSanitizer())
        __tsan_mutex_destroy(this, 0);
    qtDestroy(this);
}

void QCoreApplication::postEvent(QObject *receiver, QEvent *event, int priority)
{
    static const auto qtPost =
        qtFunction<void(QObject *, QEvent *, int)>("_ZN16QCoreApplication9postEventEP7QObjectP6QEventi");
    beforePosting(event);
    qtPost(receiver, event, priority);
}

void QMetaObject::activate(QObject *sender, const QMetaObject *metaObject, int signal, void **arguments)
{
    static const auto qtActivate =
        qtFunction<void(QObject *, const QMetaObject *, int, void **)>("_ZN11QMetaObject8activateEP7QObjectPKS_iPPv");
    beforePosting(sender);
    qtActivate(sender, metaObject, signal, arguments);
}

bool QMetaObject::invokeMethodImpl(QObject *object, QtPrivate::QSlotObjectBase *slot, Qt::ConnectionType type,
                                   void *result)
{
    static const auto qtInvoke = qtFunction<bool(QObject *, QtPrivate::QSlotObjectBase *, Qt::ConnectionType, void *)>(
        "_ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt14ConnectionTypeEPv");
    beforePosting(object);
    return qtInvoke(object, hasSanitizer() ? new InvokedFunction(slot) : slot, type, result);
}
