#pragma once
// File helpers. Reads and writes are counted per path (FrameWork::GetIOStaticstic).

#include <QByteArray>
#include <QString>

namespace core {
namespace fs {

bool IsFileExist(const QString& path);  // a regular file (or a link to one)
bool IsDirExist(const QString& path);
bool ReadFile(const QString& path, QByteArray& out);
// Writes atomically (temporary file, then rename); creates missing parent folders.
bool WriteFile(const QString& path, const QByteArray& data);
bool AppendFile(const QString& path, const QByteArray& data);

}  // namespace fs
}  // namespace core
