/* measure OUT ERR COMMAND [ARGUMENT...]: runs one command to its end, with nothing to read and with
 * its output in the files OUT and ERR, and prints
 *     MICROSECONDS PEAK_KIB EXIT_CODE
 * The peak is the largest resident size of the command's process as the kernel counted it. Wine's
 * loader becomes the Windows program, so the number is that program's own; what the Wine server
 * holds for it is not in it. A command that does not end is killed after ten minutes (exit code 124).
 */
#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <stdio.h>
#include <string.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

enum { kMostSeconds = 600, kUsage = 2, kKilled = 124, kNotStarted = 127, kSignalBase = 128 };

static volatile pid_t child;
static volatile sig_atomic_t expired;

static void OnAlarm(int number) {
    (void)number;
    expired = 1;
    kill(child, SIGKILL);
}

static int Redirect(const char* path, int flags, int number) {
    const int file = open(path, flags, 0666);
    if (file < 0 || dup2(file, number) < 0) {
        fprintf(stderr, "measure: %s: %s\n", path, strerror(errno));
        return 0;
    }
    close(file);
    return 1;
}

static void Start(char** arguments) {
    const int write = O_WRONLY | O_CREAT | O_TRUNC;
    if (Redirect("/dev/null", O_RDONLY, STDIN_FILENO) &&
        Redirect(arguments[1], write, STDOUT_FILENO) &&
        Redirect(arguments[2], write, STDERR_FILENO)) {
        execvp(arguments[3], arguments + 3);
    }
    _exit(kNotStarted);
}

static long long Microseconds(void) {
    struct timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * 1000000LL + now.tv_nsec / 1000;
}

int main(int count, char** arguments) {
    if (count < 4) {
        fprintf(stderr, "usage: measure OUT ERR COMMAND [ARGUMENT...]\n");
        return kUsage;
    }
    signal(SIGALRM, OnAlarm);
    const long long begin = Microseconds();
    child = fork();
    if (child < 0) return kNotStarted;
    if (child == 0) Start(arguments);
    alarm(kMostSeconds);
    int status = 0;
    struct rusage usage;
    while (wait4(child, &status, 0, &usage) < 0) {
        if (errno != EINTR) return kNotStarted;
    }
    const long long took = Microseconds() - begin;
    int code = kSignalBase;
    if (expired) {
        code = kKilled;
    } else if (WIFEXITED(status)) {
        code = WEXITSTATUS(status);
    } else if (WIFSIGNALED(status)) {
        code = kSignalBase + WTERMSIG(status);
    }
    printf("%lld %ld %d\n", took, usage.ru_maxrss, code);
    return 0;
}
