// A library to preload: one operation on a file fails, as on a full or broken disk.
//   FAILING_FILES_UNDER  only files in this directory count
//   FAILING_FILES_CALL   write, sync, rename or open (for writing)
//   FAILING_FILES_AT     the number of the operation that fails, counted from 1
//   FAILING_FILES_MARK   a file that is created when it fails

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

std::atomic<int> operations{0};

const char *setting(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : "";
}

template <class Function>
Function *next(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

void mark()
{
    const int descriptor =
        next<int(const char *, int, ...)>("open")(setting("FAILING_FILES_MARK"), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
    if (descriptor >= 0)
        ::close(descriptor);
}

/// Returns whether this operation has to fail.
bool fails(const char *call, const char *path)
{
    const char *directory = setting("FAILING_FILES_UNDER");
    if (std::strcmp(call, setting("FAILING_FILES_CALL")) != 0
        || std::strncmp(path, directory, std::strlen(directory)) != 0)
        return false;
    if (++operations != std::atoi(setting("FAILING_FILES_AT")))
        return false;
    mark();
    errno = std::strcmp(call, "write") == 0 ? ENOSPC : EIO;
    return true;
}

bool fails(const char *call, int descriptor)
{
    char link[64];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
    char path[PATH_MAX + 1];
    const ssize_t length = readlink(link, path, PATH_MAX);
    if (length < 0)
        return false;
    path[length] = '\0';
    return fails(call, path);
}

bool opensForWriting(int flags)
{
    return (flags & O_ACCMODE) != O_RDONLY;
}

mode_t modeOf(int flags, va_list arguments)
{
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

int openFile(const char *name, const char *path, int flags, mode_t mode)
{
    if (opensForWriting(flags) && fails("open", path))
        return -1;
    return next<int(const char *, int, ...)>(name)(path, flags, mode);
}

}

extern "C" {

int open(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openFile("open", path, flags, mode);
}

int open64(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openFile("open64", path, flags, mode);
}

ssize_t write(int descriptor, const void *bytes, size_t size)
{
    return fails("write", descriptor) ? -1 : next<ssize_t(int, const void *, size_t)>("write")(descriptor, bytes, size);
}

ssize_t writev(int descriptor, const struct iovec *parts, int count)
{
    return fails("write", descriptor)
        ? -1
        : next<ssize_t(int, const struct iovec *, int)>("writev")(descriptor, parts, count);
}

ssize_t pwrite(int descriptor, const void *bytes, size_t size, off_t offset)
{
    return fails("write", descriptor)
        ? -1
        : next<ssize_t(int, const void *, size_t, off_t)>("pwrite")(descriptor, bytes, size, offset);
}

ssize_t pwrite64(int descriptor, const void *bytes, size_t size, off64_t offset)
{
    return fails("write", descriptor)
        ? -1
        : next<ssize_t(int, const void *, size_t, off64_t)>("pwrite64")(descriptor, bytes, size, offset);
}

int fsync(int descriptor)
{
    return fails("sync", descriptor) ? -1 : next<int(int)>("fsync")(descriptor);
}

int fdatasync(int descriptor)
{
    return fails("sync", descriptor) ? -1 : next<int(int)>("fdatasync")(descriptor);
}

int rename(const char *from, const char *to)
{
    return fails("rename", to) ? -1 : next<int(const char *, const char *)>("rename")(from, to);
}

int renameat2(int fromDirectory, const char *from, int toDirectory, const char *to, unsigned flags)
{
    return fails("rename", to) ? -1
                               : next<int(int, const char *, int, const char *, unsigned)>("renameat2")(
                                   fromDirectory, from, toDirectory, to, flags);
}
}
