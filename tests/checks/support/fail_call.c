/* Makes one file call of a program fail, as a full or broken disk does: preloaded into Wine's own
 * processes, it stands before the calls of the C library.
 *
 * VW_FAIL_MARKS    only calls on paths that hold one of these texts count; "|" stands between them
 * VW_FAIL_CONTROL  a file "NUMBER ERROR": the call of this number, counted over all processes, fails
 *                  once with this error (of errno); 0 only counts. No such file: nothing is done.
 * VW_FAIL_LOG      gets a line for each call that was counted: "NAME PATH", and "failed" if it was
 */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

enum { LONGEST = 4096 };

static ssize_t rawRead(int file, void *to, size_t size) { return syscall(SYS_read, file, to, size); }
static ssize_t rawWrite(int file, const void *from, size_t size) {
    return syscall(SYS_write, file, from, size);
}
static int rawOpen(const char *path, int flags) {
    return (int)syscall(SYS_openat, AT_FDCWD, path, flags | O_CLOEXEC, 0600);
}

/* Whether a path holds one of the texts. */
static int isMarked(const char *path, const char *marks) {
    for (;;) {
        const size_t length = strcspn(marks, "|");
        if (length && memmem(path, strlen(path), marks, length)) return 1;
        if (!marks[length]) return 0;
        marks += length + 1;
    }
}

/* Counts a call on this path; the error that it shall have, else 0. */
static int errorFor(const char *name, const char *path) {
    const char *marks = getenv("VW_FAIL_MARKS");
    const char *control = getenv("VW_FAIL_CONTROL");
    const char *log = getenv("VW_FAIL_LOG");
    if (!marks || !control || !log || !isMarked(path, marks)) return 0;
    const int kept = errno;
    const int file = rawOpen(control, O_RDWR);
    if (file < 0) {
        errno = kept;
        return 0;
    }
    char text[64] = "";
    int number = 0, error = 0;
    flock(file, LOCK_EX);
    (void)!rawRead(file, text, sizeof text - 1);
    sscanf(text, "%d %d", &number, &error);
    const int fails = number == 1;
    if (number > 0) {
        /* Of a fixed width, so that it overwrites what was there. */
        snprintf(text, sizeof text, "%8d %4d\n", number - 1, error);
        lseek(file, 0, SEEK_SET);
        (void)!rawWrite(file, text, strlen(text));
    }
    char line[LONGEST + 64];
    const int length =
        snprintf(line, sizeof line, "%s%s %s\n", fails ? "failed " : "", name, path);
    const int out = rawOpen(log, O_WRONLY | O_CREAT | O_APPEND);
    (void)!rawWrite(out, line, (size_t)length);
    close(out);
    close(file);
    errno = kept;
    return fails ? error : 0;
}

static int errorForFile(const char *name, int file) {
    char link[64], path[LONGEST];
    snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    const int kept = errno;
    const ssize_t length = readlink(link, path, sizeof path - 1);
    errno = kept;
    if (length <= 0) return 0;
    path[length] = 0;
    return errorFor(name, path);
}

/* Wine names files relative to the folder that it stands in, too. */
static int errorForPath(const char *name, const char *path) {
    char full[2 * LONGEST];
    if (path[0] == '/') return errorFor(name, path);
    const int kept = errno;
    if (!getcwd(full, LONGEST)) full[0] = 0;
    errno = kept;
    snprintf(full + strlen(full), LONGEST, "/%s", path);
    return errorFor(name, full);
}

#define NEXT(name) ((__typeof__(&name))dlsym(RTLD_NEXT, #name))
#define FAIL_IF(wanted, failed)  \
    do {                         \
        const int code = wanted; \
        if (code) {              \
            errno = code;        \
            return failed;       \
        }                        \
    } while (0)

ssize_t read(int file, void *to, size_t size) {
    FAIL_IF(errorForFile("read", file), -1);
    return NEXT(read)(file, to, size);
}
ssize_t pread(int file, void *to, size_t size, off_t at) {
    FAIL_IF(errorForFile("read", file), -1);
    return NEXT(pread)(file, to, size, at);
}
ssize_t pread64(int file, void *to, size_t size, off64_t at) {
    FAIL_IF(errorForFile("read", file), -1);
    return NEXT(pread64)(file, to, size, at);
}
ssize_t write(int file, const void *from, size_t size) {
    FAIL_IF(errorForFile("write", file), -1);
    return NEXT(write)(file, from, size);
}
ssize_t pwrite(int file, const void *from, size_t size, off_t at) {
    FAIL_IF(errorForFile("write", file), -1);
    return NEXT(pwrite)(file, from, size, at);
}
ssize_t pwrite64(int file, const void *from, size_t size, off64_t at) {
    FAIL_IF(errorForFile("write", file), -1);
    return NEXT(pwrite64)(file, from, size, at);
}
int rename(const char *from, const char *to) {
    FAIL_IF(errorForPath("rename", from), -1);
    return NEXT(rename)(from, to);
}
int mkdir(const char *path, mode_t mode) {
    FAIL_IF(errorForPath("mkdir", path), -1);
    return NEXT(mkdir)(path, mode);
}
int unlink(const char *path) {
    FAIL_IF(errorForPath("unlink", path), -1);
    return NEXT(unlink)(path);
}
int rmdir(const char *path) {
    FAIL_IF(errorForPath("rmdir", path), -1);
    return NEXT(rmdir)(path);
}

static mode_t modeOf(int flags, va_list more) { return flags & O_CREAT ? va_arg(more, mode_t) : 0; }

int open64(const char *path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const mode_t mode = modeOf(flags, more);
    va_end(more);
    FAIL_IF(errorForPath(flags & O_CREAT ? "create" : "open", path), -1);
    return NEXT(open64)(path, flags, mode);
}
int open(const char *path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const mode_t mode = modeOf(flags, more);
    va_end(more);
    FAIL_IF(errorForPath(flags & O_CREAT ? "create" : "open", path), -1);
    return NEXT(open)(path, flags, mode);
}
