#pragma once
// Internals of the zip helpers: how items on disk become entries, shared by both packers.

#include <QFile>
#include <QFileInfo>
#include <QString>

#include <vector>

// NOLINTNEXTLINE(bugprone-reserved-identifier): the namespace the host's code calls
namespace _zip {
namespace detail {

// An absolute path with trailing separators, "." and ".." resolved, so that "logs/", "logs/." and
// "x/../logs" all name the folder "logs".
QString NormalisedPath(const QString& path);
// The prefix removed from every entry of an item given to pack: its parent folder with one "/".
QString ParentPrefix(const QString& normalisedPath);
// The entry name of an item: its path below the strip prefix, or, when the prefix does not hold it,
// its name under the parent entry. Never absolute: the extractor refuses absolute names.
QString EntryName(const QString& absPath, const QString& parentEntry, const QString& stripPrefix);

// Unix permission bits (no file type) of Qt permissions, and back.
quint32 PermissionsToMode(QFile::Permissions permissions);

// Where the walk below delivers what it finds. A sink reports its own failures (with a log line)
// and answers false; the walk goes on with the next item.
class IPackSink {
public:
    virtual ~IPackSink() = default;
    virtual bool AddFolder(const QFileInfo& info, const QString& entry) = 0;
    // `shownPath` is the path as the caller wrote it, for log lines.
    virtual bool AddFile(const QFileInfo& info, const QString& entry, const QString& shownPath) = 0;
};

// Packs a folder: its own entry, then its subfolders (recursively), then its files, each in name
// order, hidden ones included. Links inside are left out; sockets, FIFOs and devices are skipped
// with a log line.
bool PackFolder(IPackSink& sink, const QString& dirPath, const QString& parentEntry, const QString& stripPrefix);
// Packs one file (a link given here is followed); a special file is skipped with a log line.
bool PackFile(IPackSink& sink, const QString& filePath, const QString& parentEntry, const QString& stripPrefix);
// Packs each path, file or folder, named relative to its own parent folder.
bool PackItems(IPackSink& sink, const std::vector<QString>& paths);

}  // namespace detail
}  // namespace _zip
