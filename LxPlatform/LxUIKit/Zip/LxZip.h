#pragma once
// Zip archives of files and folders.
//
// Packing stores every file with its permissions and modification time; folders get their own
// entries (empty folders survive), hidden files are included, symbolic links are not. An entry is
// named relative to the folder that holds the item given, so packing ".../logs" gives "logs/...".
// A file too large for the format (2 GiB and over), or one that would push the archive past 2 GiB,
// is refused with a log line: the archive format without Zip64 cannot hold it.
//
// Unpacking is all-or-nothing about safety: every entry is checked first and the whole archive is
// refused (nothing written) when an entry is absolute, climbs out of the destination, or is a
// symbolic link. Entries are then written one by one; any failed write (or a corrupt entry) makes
// the call fail. Permissions and recorded modification times are restored.
//
// All failures are logged and answered with false; nothing throws.

#include <QSharedPointer>
#include <QString>

#include <vector>

class QZipWriter;

namespace _zip {

bool ExtractDir(const QString& zipPath, const QString& destDir);
bool CompressFiles(const std::vector<QString>& paths, const QString& zipPath);
bool CompressDir(const QString& dirPath, const QString& zipPath);

namespace compress {
bool CompressFile(QSharedPointer<QZipWriter> writer, const QString& filePath, const QString& parentEntry,
                  const QString& stripPrefix);
bool CompressDir(QSharedPointer<QZipWriter> writer, const QString& dirPath, const QString& parentEntry,
                 const QString& stripPrefix);
}  // namespace compress

// Largest file and archive the helpers write (bytes).
constexpr qint64 kMaxZipBytes = (qint64(1) << 31) - 1;

}  // namespace _zip
