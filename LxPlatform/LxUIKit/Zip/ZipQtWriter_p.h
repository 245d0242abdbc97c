#pragma once
// The inner workers of the zip helpers, on Qt's own zip writer, for code that already holds one.
//
// They keep QZipWriter's limits: each file is held whole in memory, and a file of 2 GiB or more, or
// one that would push the archive past 2 GiB (kMaxZipBytes), is refused with a log line. Entries are
// named as the public packers name them (see LxZip.h). The archive file is the caller's: a write
// that fails (a full disk) makes the call answer false with a log line, and the caller, which
// named the file, decides what becomes of it.

#include <QSharedPointer>
#include <QString>

class QZipWriter;

// NOLINTNEXTLINE(bugprone-reserved-identifier): the namespace the host's code calls
namespace _zip {
namespace compress {

bool CompressFile(QSharedPointer<QZipWriter> writer, const QString& filePath, const QString& parentEntry,
                  const QString& stripPrefix);
bool CompressDir(QSharedPointer<QZipWriter> writer, const QString& dirPath, const QString& parentEntry,
                 const QString& stripPrefix);

}  // namespace compress

// Largest file and archive the QZipWriter overloads write (bytes).
constexpr qint64 kMaxZipBytes = (qint64(1) << 31) - 1;

}  // namespace _zip
