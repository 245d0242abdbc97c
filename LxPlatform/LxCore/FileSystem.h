#pragma once
// File helpers. Reads and writes are counted per path (FrameWork::GetIOStaticstic).

#include <LxCore/LxCoreExport.h>
#include <QByteArray>
#include <QString>

namespace core {
namespace fs {

LXCORE_EXPORT bool IsFileExist(const QString& path);  // a regular file (or a link to one)
LXCORE_EXPORT bool IsDirExist(const QString& path);
LXCORE_EXPORT bool ReadFile(const QString& path, QByteArray& out);
// Writes atomically (temporary file, then rename); creates missing parent folders. On failure
// (logged) the file keeps its previous content and no temporary file is left.
LXCORE_EXPORT bool WriteFile(const QString& path, const QByteArray& data);
// False (logged) when the data did not all reach the file; what did stays (appending is not atomic).
LXCORE_EXPORT bool AppendFile(const QString& path, const QByteArray& data);

}  // namespace fs
}  // namespace core
