#pragma once
// Zip archives of files and folders.
//
// Packing stores every file with its permissions and modification time; folders get their own
// entries, so empty folders survive a round trip. Hidden files are included; symbolic links are
// left out silently (a link given directly is followed); anything else that is not a regular file
// or a folder (socket, FIFO, device) is skipped with a log line instead of failing the archive.
// Paths are normalised first (trailing separators, "." and ".." components), and an entry is named
// relative to the folder that holds the item given: packing ".../logs", ".../logs/" or
// ".../logs/." all give "logs/...". Entry names are never absolute. Compression uses the writer's
// default level. A file too large for the format (2 GiB and over), or one that would push the
// archive past 2 GiB, is refused with a log line: the archive format without Zip64 cannot hold it.
//
// Unpacking is all-or-nothing about safety: every entry is checked first and the whole archive is
// refused (nothing written) when an entry is absolute, climbs out of the destination, or is a
// symbolic link: an archive from elsewhere must not reach outside the folder it is unpacked into,
// and a link would let a later entry do exactly that. Entries are then written one by one; any
// failed write (or a corrupt entry) makes the call fail. Permissions and recorded modification
// times are restored. Every archive these helpers pack, they unpack.
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
