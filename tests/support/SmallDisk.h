#pragma once
// A small tmpfs mounted on a temporary folder for the lifetime of the object, for tests of what the
// code does when the disk fills up. Mounting needs root (CAP_SYS_ADMIN); where it is refused (not
// root, a container without the capability) the object is unmounted and says why, and the test
// skips with LX_REQUIRE_SMALL_DISK. The disk is filled with one filler file written until only the
// space asked for is left, so tests do not depend on exact sizes.

#include <QString>
#include <QTemporaryDir>

namespace lxtest {

class SmallDisk {
public:
    explicit SmallDisk(qint64 i64Bytes = qint64(1) << 20);
    ~SmallDisk();  // unmounts
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool isMounted() const { return m_bMounted; }
    QString skipReason() const { return m_strSkipReason; }
    QString path() const { return m_dir.path(); }
    QString filePath(const QString& relative) const { return m_dir.filePath(relative); }

    qint64 freeBytes() const;
    // Writes the filler until at most `i64LeaveFree` bytes are free (0: until the disk refuses
    // more). False when the disk did not fill.
    bool fill(qint64 i64LeaveFree = 0);
    // Removes the filler: the space comes back.
    void release();
    // Unmounts (lazily when a file on it is still open).
    void unmount();

private:
    QTemporaryDir m_dir;
    bool m_bMounted = false;
    QString m_strSkipReason;
};

}  // namespace lxtest

// Skips the running test when the disk could not be mounted.
#define LX_REQUIRE_SMALL_DISK(disk)                 \
    do {                                            \
        if (!(disk).isMounted())                    \
            QSKIP(qPrintable((disk).skipReason())); \
    } while (false)
