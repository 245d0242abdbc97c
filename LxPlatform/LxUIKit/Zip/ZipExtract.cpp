// Unpacking: every entry is checked before anything is written, then each is streamed through a
// part file that takes its final name only once its size and CRC have been confirmed.

#include <LxUIKit/Zip/LxZip.h>

#include <LxCore/FrameWork.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QVector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>

#include <cerrno>
#include <cstring>
#include <memory>

namespace _zip {
namespace {

// Bytes read from an entry at a time; the memory an extraction needs beyond the entry list.
constexpr zip_uint64_t kChunkBytes = zip_uint64_t(256) * 1024;
// "Directory" bit of the attributes archivers on MS-DOS and Windows hosts record.
constexpr zip_uint32_t kDosDirectoryAttribute = 0x10;
// Permissions a restored file always gets, so that it can be replaced or removed later.
constexpr mode_t kOwnerReadWrite = S_IRUSR | S_IWUSR;

// One entry as checked before extraction.
struct PlannedEntry {
    zip_uint64_t u64Index = 0;
    QString strName;     // as stored, for log lines
    QString strRelPath;  // below the destination
    bool bFolder = false;
    zip_uint64_t u64Size = 0;    // declared, unpacked
    zip_uint64_t u64Packed = 0;  // declared, as stored in the archive
    time_t tModified = 0;        // 0 when the entry records none
    mode_t mode = 0;             // Unix permission bits, 0 when the entry records none
};

using ZipPtr = std::unique_ptr<zip_t, void (*)(zip_t*)>;
using ZipFilePtr = std::unique_ptr<zip_file_t, int (*)(zip_file_t*)>;

// An entry name that stays inside the destination, or an empty string when it would not.
QString SafeRelativePath(const QString& entry) {
    QString name = entry;
    name.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (name.isEmpty() || name.startsWith(QLatin1Char('/')))
        return QString();
    if (name.size() >= 2 && name.at(1) == QLatin1Char(':'))  // "C:..." drive paths
        return QString();
    QString clean = QDir::cleanPath(name);
    if (clean == QLatin1String("..") || clean.startsWith(QLatin1String("../")) || clean == QLatin1String("."))
        return QString();
    return clean;
}

bool IsInside(const QString& canonicalRoot, const QString& path) {
    return path == canonicalRoot || path.startsWith(canonicalRoot + QLatin1Char('/'));
}

bool IsDosHost(zip_uint8_t host) {
    return host == ZIP_OPSYS_DOS || host == ZIP_OPSYS_OS_2 || host == ZIP_OPSYS_WINDOWS_NTFS || host == ZIP_OPSYS_VFAT;
}

zip_uint64_t SaturatingAdd(zip_uint64_t a, zip_uint64_t b) { return a + b < a ? ~zip_uint64_t(0) : a + b; }

// Reads the entry list and refuses the archive when an entry is unsafe to unpack or cannot be
// unpacked at all. Links and names that leave the destination are judged first, entry by entry.
bool PlanEntries(zip_t* zip, const QString& zipPath, QVector<PlannedEntry>& out) {
    const zip_int64_t count = zip_get_num_entries(zip, 0);
    for (zip_uint64_t i = 0; i < zip_uint64_t(count); ++i) {
        zip_stat_t st;
        zip_uint8_t host = 0;
        zip_uint32_t attributes = 0;
        constexpr zip_uint64_t kNeeded = ZIP_STAT_NAME | ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_COMP_METHOD;
        if (zip_stat_index(zip, i, 0, &st) != 0 || (st.valid & kNeeded) != kNeeded ||
            zip_file_get_external_attributes(zip, i, 0, &host, &attributes) != 0) {
            LXUIKIT_LOG_ERROR("{} cannot be read as a zip archive ({})", zipPath, zip_strerror(zip));
            return false;
        }
        PlannedEntry e;
        e.u64Index = i;
        e.strName = QString::fromUtf8(st.name);
        const mode_t unixMode = host == ZIP_OPSYS_UNIX ? mode_t(attributes >> 16) : 0;
        if (S_ISLNK(unixMode)) {
            LXUIKIT_LOG_ERROR("refused {}: entry {} is a symbolic link", zipPath, e.strName);
            return false;
        }
        e.strRelPath = SafeRelativePath(e.strName);
        if (e.strRelPath.isEmpty()) {
            LXUIKIT_LOG_ERROR("refused {}: entry {} leaves the destination", zipPath, e.strName);
            return false;
        }
        e.bFolder = e.strName.endsWith(QLatin1Char('/')) || e.strName.endsWith(QLatin1Char('\\')) ||
                    S_ISDIR(unixMode) || (IsDosHost(host) && (attributes & kDosDirectoryAttribute));
        if ((st.valid & ZIP_STAT_ENCRYPTION_METHOD) && st.encryption_method != ZIP_EM_NONE) {
            LXUIKIT_LOG_ERROR("refused {}: entry {} is encrypted", zipPath, e.strName);
            return false;
        }
        if (!e.bFolder && st.comp_method != ZIP_CM_STORE && st.comp_method != ZIP_CM_DEFLATE) {
            LXUIKIT_LOG_ERROR("refused {}: entry {} uses compression method {}, neither stored nor deflated", zipPath,
                              e.strName, st.comp_method);
            return false;
        }
        e.u64Size = e.bFolder ? 0 : st.size;
        e.u64Packed = st.comp_size;
        e.tModified = (st.valid & ZIP_STAT_MTIME) ? st.mtime : 0;
        e.mode = unixMode & 0777;
        out.push_back(e);
    }
    return true;
}

// Refuses an archive whose entries claim more than the file can hold or would unpack to more than
// the bounds allow, before a byte is written. Sizes are the declared ones; extraction then holds
// every entry to its declared size.
bool CheckSizes(const QVector<PlannedEntry>& entries, const QString& zipPath, zip_uint64_t fileBytes) {
    zip_uint64_t packed = 0;
    zip_uint64_t unpacked = 0;
    for (const PlannedEntry& e : entries) {
        packed = SaturatingAdd(packed, e.u64Packed);
        unpacked = SaturatingAdd(unpacked, e.u64Size);
    }
    if (packed > fileBytes) {
        LXUIKIT_LOG_ERROR("refused {}: its entries claim {} bytes of data, the file holds {}", zipPath, packed,
                          fileBytes);
        return false;
    }
    if (unpacked > zip_uint64_t(kMaxExtractedBytes)) {
        LXUIKIT_LOG_ERROR("refused {}: it would unpack to {} bytes, more than the {} allowed", zipPath, unpacked,
                          kMaxExtractedBytes);
        return false;
    }
    if (unpacked / zip_uint64_t(kMaxExpansionRatio) > fileBytes) {
        LXUIKIT_LOG_ERROR("refused {}: it would unpack to {} bytes, more than {} times its own {}", zipPath, unpacked,
                          kMaxExpansionRatio, fileBytes);
        return false;
    }
    return true;
}

// A file written beside its final name and renamed onto it only when complete, so that a refused or
// failed entry never leaves a partial file under the final name. Renaming also replaces a link
// found at the final name instead of writing through it.
class CPartFile {
public:
    explicit CPartFile(const QString& target) : m_strTarget(target) {}
    CPartFile(const CPartFile&) = delete;
    CPartFile& operator=(const CPartFile&) = delete;
    ~CPartFile() {
        if (m_fd >= 0)
            ::close(m_fd);
        if (!m_partPath.isEmpty())
            ::unlink(m_partPath.constData());
    }

    bool Open() {
        const QString dir = QFileInfo(m_strTarget).absolutePath();
        for (int attempt = 0; attempt < 16 && m_fd < 0; ++attempt) {
            m_partPath =
                QFile::encodeName(QStringLiteral("%1/.lxpart-%2")
                                      .arg(dir)
                                      .arg(QRandomGenerator::global()->generate64(), 16, 16, QLatin1Char('0')));
            // 0666 as an ordinary new file: the umask decides unless the entry records a mode.
            m_fd = ::open(m_partPath.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
            if (m_fd < 0 && errno != EEXIST)
                break;
        }
        if (m_fd < 0)
            m_partPath.clear();
        return Check(m_fd >= 0);
    }

    bool Write(const char* data, size_t size) {
        while (size > 0) {
            const ssize_t n = ::write(m_fd, data, size);
            if (n < 0 && errno == EINTR)
                continue;
            if (n <= 0)
                return Check(false);
            data += n;
            size -= size_t(n);
        }
        return true;
    }

    // Sets the recorded mode and time, then gives the file its final name.
    bool Commit(mode_t mode, time_t modified) {
        if (mode != 0 && !Check(::fchmod(m_fd, mode | kOwnerReadWrite) == 0))
            return false;
        if (modified != 0) {
            const timespec times[2] = {{0, UTIME_OMIT}, {modified, 0}};
            if (!Check(::futimens(m_fd, times) == 0))
                return false;
        }
        const int fd = m_fd;
        m_fd = -1;
        if (!Check(::close(fd) == 0) ||
            !Check(::rename(m_partPath.constData(), QFile::encodeName(m_strTarget).constData()) == 0))
            return false;
        m_partPath.clear();
        return true;
    }

    QString ErrorString() const { return QString::fromLocal8Bit(std::strerror(m_errno)); }

private:
    bool Check(bool ok) {
        if (!ok)
            m_errno = errno;
        return ok;
    }

    QString m_strTarget;
    QByteArray m_partPath;
    int m_fd = -1;
    int m_errno = 0;
};

// Streams one file entry to `target`, holding it to its declared size and CRC.
bool WriteEntry(zip_t* zip, const PlannedEntry& e, const QString& target, const QString& zipPath, QByteArray& buffer) {
    ZipFilePtr file(zip_fopen_index(zip, e.u64Index, 0), zip_fclose);
    if (!file) {
        LXUIKIT_LOG_ERROR("entry {} of {} cannot be read: {}", e.strName, zipPath, zip_strerror(zip));
        return false;
    }
    CPartFile part(target);
    if (!part.Open()) {
        LXUIKIT_LOG_ERROR("cannot write {}: {}", target, part.ErrorString());
        return false;
    }
    zip_uint64_t total = 0;
    for (;;) {
        // At most one byte past the declared size: inflation stops as soon as an entry overruns.
        // Reading on to the end is what makes libzip compare the CRC.
        const zip_uint64_t want = qMin<zip_uint64_t>(zip_uint64_t(buffer.size()), e.u64Size - total + 1);
        const zip_int64_t n = zip_fread(file.get(), buffer.data(), want);
        if (n < 0) {
            const zip_error_t* error = zip_file_get_error(file.get());
            if (zip_error_code_zip(error) == ZIP_ER_CRC)
                LXUIKIT_LOG_ERROR("entry {} of {} fails its CRC check", e.strName, zipPath);
            else
                LXUIKIT_LOG_ERROR("entry {} of {} is corrupt: {}", e.strName, zipPath, zip_file_strerror(file.get()));
            return false;
        }
        if (n == 0)
            break;
        total += zip_uint64_t(n);
        if (total > e.u64Size) {
            LXUIKIT_LOG_ERROR("entry {} of {} is longer than the {} bytes it declares", e.strName, zipPath, e.u64Size);
            return false;
        }
        if (!part.Write(buffer.constData(), size_t(n))) {
            LXUIKIT_LOG_ERROR("cannot write {}: {}", target, part.ErrorString());
            return false;
        }
    }
    if (total < e.u64Size) {
        LXUIKIT_LOG_ERROR("entry {} of {} is shorter than declared ({} of {} bytes)", e.strName, zipPath, total,
                          e.u64Size);
        return false;
    }
    if (!part.Commit(e.mode, e.tModified)) {
        LXUIKIT_LOG_ERROR("cannot write {}: {}", target, part.ErrorString());
        return false;
    }
    FrameWork::AddIOWrite(target, uint64_t(total));
    return true;
}

// Folders last and deepest first: writing their contents changed their times.
void RestoreFolderTimes(const QVector<QPair<QString, time_t>>& folders) {
    for (auto it = folders.crbegin(); it != folders.crend(); ++it) {
        const timespec times[2] = {{0, UTIME_OMIT}, {it->second, 0}};
        ::utimensat(AT_FDCWD, QFile::encodeName(it->first).constData(), times, 0);
    }
}

}  // namespace

bool ExtractDir(const QString& zipPath, const QString& destDir) {
    const QFileInfo zipInfo(zipPath);
    if (!zipInfo.exists()) {
        LXUIKIT_LOG_ERROR("{} not found! ", zipPath);
        return false;
    }
    const QFileInfo destInfo(destDir);
    if (destInfo.exists() && !destInfo.isDir()) {
        LXUIKIT_LOG_ERROR("{} is not a folder! ", destDir);
        return false;
    }
    if (!destInfo.exists() && !QDir().mkpath(destDir)) {
        LXUIKIT_LOG_ERROR("Cannot create directory: {} ", destDir);
        return false;
    }

    int error = 0;
    ZipPtr zip(zip_open(QFile::encodeName(zipPath).constData(), ZIP_RDONLY, &error), zip_discard);
    if (!zip) {
        zip_error_t e;
        zip_error_init_with_code(&e, error);
        LXUIKIT_LOG_ERROR("{} cannot be read as a zip archive ({})", zipPath, zip_error_strerror(&e));
        zip_error_fini(&e);
        return false;
    }
    QVector<PlannedEntry> entries;
    if (!PlanEntries(zip.get(), zipPath, entries) || !CheckSizes(entries, zipPath, zip_uint64_t(zipInfo.size())))
        return false;

    const QString root = QFileInfo(destDir).canonicalFilePath();
    QVector<QPair<QString, time_t>> folderTimes;
    QByteArray buffer(int(kChunkBytes), Qt::Uninitialized);
    for (const PlannedEntry& e : qAsConst(entries)) {
        const QString target = root + QLatin1Char('/') + e.strRelPath;
        const QString dir = e.bFolder ? target : QFileInfo(target).absolutePath();
        if (!QDir().mkpath(dir)) {
            LXUIKIT_LOG_ERROR("Cannot create directory: {} ", dir);
            return false;
        }
        // A link already on disk must not carry a write outside the destination.
        if (!IsInside(root, QFileInfo(dir).canonicalFilePath())) {
            LXUIKIT_LOG_ERROR("refused entry {}: {} resolves outside {}", e.strRelPath, dir, destDir);
            return false;
        }
        if (e.bFolder) {
            if (e.tModified != 0)
                folderTimes.push_back({target, e.tModified});
        } else if (!WriteEntry(zip.get(), e, target, zipPath, buffer)) {
            return false;
        }
    }
    RestoreFolderTimes(folderTimes);
    return true;
}

}  // namespace _zip
