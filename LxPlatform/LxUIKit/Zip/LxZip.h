#pragma once
// Zip archives of files and folders.
//
// Packing stores every file with its permissions and modification time; folders get their own
// entries, so empty folders survive a round trip. Hidden files are included; symbolic links are
// left out silently (a link given directly is followed); anything else that is not a regular file
// or a folder (socket, FIFO, device) is skipped with a log line instead of failing the archive.
// Paths are normalised first (trailing separators, "." and ".." components), and an entry is named
// relative to the folder that holds the item given: packing ".../logs", ".../logs/" or
// ".../logs/." all give "logs/...". Entry names are never absolute, and UTF-8.
//
// ExtractDir, CompressFiles and CompressDir stream every file through zlib in chunks, so memory
// does not grow with file size, and read and write Zip64 where sizes or offsets need it. Files are
// deflated at kCompressionLevel, one below zlib's and the zip tool's default: on log text it takes
// about 40 % less CPU than the zip tool for an archive about 4 % larger, which suits diagnostics
// packed while a user waits.
//
// Unpacking checks every entry before writing anything, and refuses the whole archive when one is
// absolute, climbs out of the destination, or is a symbolic link (an archive from elsewhere must not
// reach outside the folder it is unpacked into, and a link would let a later entry do exactly
// that); when one is encrypted or compressed other than stored or deflated (nothing here packs
// them); when the entries claim more packed data than the file holds (a lie, or entries sharing
// data, the trick of non-recursive bombs); or when the declared sizes add up to more than
// kMaxExtractedBytes or to more than kMaxExpansionRatio times the archive's size (deflate itself
// cannot exceed that ratio, so a larger claim is never an honest archive). Each entry is then
// inflated only up to its declared size and written to a part file beside its final name; an entry
// longer or shorter than declared, or with a wrong CRC, fails the call, and its part file is
// removed, so no file that did not check out ever carries its final name. Entries already written
// stay. Permissions and recorded modification times are restored, folder times last. Duplicate
// names are unpacked in archive order, the later one winning. Every archive these helpers pack,
// they unpack.
//
// CompressFiles and CompressDir write the archive under a temporary name beside zipPath and rename
// it into place only once it is complete: when writing fails (a full disk), nothing is left under
// zipPath, and an archive that was already there stays as it was. ExtractDir writes each entry
// through a part file the same way (see above); on a full disk the entry being written is removed
// and the call fails, while entries written before it stay (the host sees false and can remove the
// folder).
//
// All failures are logged and answered with false; nothing throws.

#include <LxUIKit/LxUIKitExport.h>
#include <QString>

#include <vector>

// NOLINTNEXTLINE(bugprone-reserved-identifier): the namespace the host's code calls
namespace _zip {

LXUIKIT_EXPORT bool ExtractDir(const QString& zipPath, const QString& destDir);
LXUIKIT_EXPORT bool CompressFiles(const std::vector<QString>& paths, const QString& zipPath);
LXUIKIT_EXPORT bool CompressDir(const QString& dirPath, const QString& zipPath);

// Deflate level of the streaming packers (zlib's 1 to 9).
constexpr int kCompressionLevel = 5;
// Largest total an archive may unpack to (bytes).
constexpr qint64 kMaxExtractedBytes = qint64(64) << 30;
// Largest ratio of unpacked size to archive size: deflate's own limit (258 bytes per 2 bits).
constexpr qint64 kMaxExpansionRatio = 1032;

}  // namespace _zip
