#include <LxCore/FileSystem.h>

#include <LxCore/FrameWork.h>
#include <LxCore/LxCoreLog_p.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace core {
namespace fs {

bool IsFileExist(const QString& path) {
    if (path.isEmpty())
        return false;
    const QFileInfo fi(path);
    return fi.exists() && fi.isFile();
}

bool IsDirExist(const QString& path) {
    if (path.isEmpty())
        return false;
    const QFileInfo fi(path);
    return fi.exists() && fi.isDir();
}

bool ReadFile(const QString& path, QByteArray& out) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) {
        LXCORE_LOG_WARN("cannot read {}: {}", path, f.errorString());
        return false;
    }
    out = f.readAll();
    FrameWork::AddIORead(path, uint64_t(out.size()));
    return true;
}

bool WriteFile(const QString& path, const QByteArray& data) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile f(path);
    // The explicit flush: commit() does not notice a failure of the flush it does itself (the
    // last buffered bytes on a full disk) and would rename a short file into place. Returning
    // without commit() removes the temporary file.
    if (!f.open(QIODevice::WriteOnly) || f.write(data) != data.size() || !f.flush() || !f.commit()) {
        LXCORE_LOG_WARN("cannot write {}: {}", path, f.errorString());
        return false;
    }
    FrameWork::AddIOWrite(path, uint64_t(data.size()));
    return true;
}

bool AppendFile(const QString& path, const QByteArray& data) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile f(path);
    // The flush is where a full disk shows for data that fits the file's buffer.
    if (!f.open(QIODevice::WriteOnly | QIODevice::Append) || f.write(data) != data.size() || !f.flush()) {
        LXCORE_LOG_WARN("cannot append to {}: {}", path, f.errorString());
        return false;
    }
    FrameWork::AddIOWrite(path, uint64_t(data.size()));
    return true;
}

}  // namespace fs
}  // namespace core
