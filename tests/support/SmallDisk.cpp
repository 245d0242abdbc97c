#include "SmallDisk.h"

#include <QByteArray>
#include <QFile>

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace lxtest {
namespace {
const char kFillerName[] = ".filler";
}  // namespace

SmallDisk::SmallDisk(qint64 i64Bytes) {
    if (!m_dir.isValid()) {
        m_strSkipReason = QStringLiteral("no temporary folder to mount a small disk on");
        return;
    }
    if (::geteuid() != 0) {
        m_strSkipReason =
            QStringLiteral("a small tmpfs disk needs root to be mounted; running as uid %1").arg(::geteuid());
        return;
    }
    const QByteArray options = "size=" + QByteArray::number(i64Bytes);
    if (::mount("tmpfs", QFile::encodeName(m_dir.path()).constData(), "tmpfs", MS_NOSUID | MS_NODEV,
                options.constData()) != 0) {
        const int error = errno;
        m_strSkipReason =
            QStringLiteral("cannot mount a tmpfs on %1: %2%3")
                .arg(m_dir.path(), QString::fromLocal8Bit(std::strerror(error)),
                     error == EPERM ? QStringLiteral(" (a container without CAP_SYS_ADMIN?)") : QString());
        return;
    }
    m_bMounted = true;
}

SmallDisk::~SmallDisk() { unmount(); }

qint64 SmallDisk::freeBytes() const {
    struct statvfs st {};
    if (::statvfs(QFile::encodeName(m_dir.path()).constData(), &st) != 0)
        return -1;
    return qint64(st.f_bavail) * qint64(st.f_frsize);
}

bool SmallDisk::fill(qint64 i64LeaveFree) {
    if (!m_bMounted)
        return false;
    const int fd = ::open(QFile::encodeName(filePath(QLatin1String(kFillerName))).constData(),
                          O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (fd < 0)
        return false;
    const QByteArray chunk(64 * 1024, '\xF0');
    for (;;) {
        const qint64 room = freeBytes() - i64LeaveFree;
        if (i64LeaveFree > 0 && room <= 0)
            break;
        const size_t size = i64LeaveFree > 0 ? size_t(qMin<qint64>(room, chunk.size())) : size_t(chunk.size());
        if (::write(fd, chunk.constData(), size) <= 0)
            break;  // full
    }
    ::close(fd);
    return freeBytes() <= qMax<qint64>(i64LeaveFree, 0);
}

void SmallDisk::release() { QFile::remove(filePath(QLatin1String(kFillerName))); }

void SmallDisk::unmount() {
    if (!m_bMounted)
        return;
    const QByteArray path = QFile::encodeName(m_dir.path());
    if (::umount2(path.constData(), 0) != 0)
        ::umount2(path.constData(), MNT_DETACH);  // something still holds a file there
    m_bMounted = false;
}

}  // namespace lxtest
