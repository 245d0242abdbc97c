#include <LxUIKit/Zip/LxZip.h>

#include "Zip_p.h"

#include <LxCore/FrameWork.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QSaveFile>

#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>

namespace _zip {
namespace {

// An archive with no entry at all: the end-of-central-directory record alone, zero counts.
constexpr char kEmptyArchive[22] = {'P', 'K', 5, 6};

// Packs through libzip, which reads each file in chunks while it writes the archive (on close), and
// switches to Zip64 records where sizes or offsets need them.
class CArchiveWriter final : public detail::IPackSink {
public:
    ~CArchiveWriter() override {
        if (m_pZip)
            zip_discard(m_pZip);
    }

    bool Open(const QString& zipPath) {
        m_strZipPath = zipPath;
        const QFileInfo info(zipPath);
        const QString dir = info.absolutePath();
        QDir().mkpath(dir);
        // Nothing is written under the final name until the archive is complete (libzip writes a
        // temporary file beside it and renames it into place), so what cannot work is refused now,
        // without touching an archive already there.
        if (info.isDir() || (info.exists() && !info.isWritable()) || !QFileInfo(dir).isDir() ||
            ::access(QFile::encodeName(dir).constData(), W_OK) != 0) {
            LXUIKIT_LOG_ERROR("unable to write:{}", zipPath);
            return false;
        }
        int error = 0;
        m_pZip = zip_open(QFile::encodeName(zipPath).constData(), ZIP_CREATE | ZIP_TRUNCATE, &error);
        if (!m_pZip) {
            LXUIKIT_LOG_ERROR("unable to write:{}", zipPath);
            return false;
        }
        return true;
    }

    bool AddFolder(const QFileInfo& info, const QString& entry) override {
        const zip_int64_t index = zip_dir_add(m_pZip, entry.toUtf8().constData(), ZIP_FL_ENC_UTF_8);
        return index >= 0 ? Stamp(index, S_IFDIR, info) : Failed(entry);
    }

    bool AddFile(const QFileInfo& info, const QString& entry, const QString& shownPath) override {
        const QByteArray native = QFile::encodeName(info.absoluteFilePath());
        // libzip opens the file only when the archive is closed; an unreadable file found then would
        // sink the whole archive, so it is found and left out now.
        QFile file(info.absoluteFilePath());
        if (!file.open(QIODevice::ReadOnly)) {
            LXUIKIT_LOG_ERROR("{} can not open! ", shownPath);
            return false;
        }
        file.close();
        zip_source_t* source = zip_source_file(m_pZip, native.constData(), 0, 0);  // 0: to the end
        if (!source)
            return Failed(entry);
        const zip_int64_t index = zip_file_add(m_pZip, entry.toUtf8().constData(), source, ZIP_FL_ENC_UTF_8);
        if (index < 0) {
            zip_source_free(source);
            return Failed(entry);
        }
        if (zip_set_file_compression(m_pZip, zip_uint64_t(index), ZIP_CM_DEFLATE, kCompressionLevel) != 0)
            return Failed(entry);
        FrameWork::AddIORead(info.absoluteFilePath(), uint64_t(info.size()));
        return Stamp(index, S_IFREG, info);
    }

    // Writes the archive; false (with a log line) when any of it could not be written.
    bool Close() {
        zip_t* zip = m_pZip;
        m_pZip = nullptr;
        if (zip_get_num_entries(zip, 0) == 0) {
            // libzip removes an archive left empty; an empty list of entries is still an archive.
            zip_discard(zip);
            QSaveFile out(m_strZipPath);
            // flush() before commit(): commit() misses a failure of its own final flush.
            if (!out.open(QIODevice::WriteOnly) ||
                out.write(kEmptyArchive, sizeof(kEmptyArchive)) != qint64(sizeof(kEmptyArchive)) || !out.flush() ||
                !out.commit()) {
                LXUIKIT_LOG_ERROR("unable to write:{} ({})", m_strZipPath, out.errorString());
                return false;
            }
            return true;
        }
        if (zip_close(zip) != 0) {
            LXUIKIT_LOG_ERROR("unable to write:{} ({})", m_strZipPath, zip_strerror(zip));
            zip_discard(zip);
            return false;
        }
        return true;
    }

private:
    // Records the item's Unix mode and modification time in its entry.
    bool Stamp(zip_int64_t index, quint32 type, const QFileInfo& info) {
        const quint32 mode = type | detail::PermissionsToMode(info.permissions());
        const bool ok =
            zip_file_set_external_attributes(m_pZip, zip_uint64_t(index), 0, ZIP_OPSYS_UNIX, mode << 16) == 0 &&
            zip_file_set_mtime(m_pZip, zip_uint64_t(index), time_t(info.lastModified().toSecsSinceEpoch()), 0) == 0;
        return ok || Failed(QString::fromUtf8(zip_get_name(m_pZip, zip_uint64_t(index), 0)));
    }

    bool Failed(const QString& entry) {
        LXUIKIT_LOG_ERROR("unable to write:{} ({})", entry, zip_strerror(m_pZip));
        return false;
    }

    zip_t* m_pZip = nullptr;
    QString m_strZipPath;
};

}  // namespace

bool CompressFiles(const std::vector<QString>& paths, const QString& zipPath) {
    if (paths.empty()) {
        LXUIKIT_LOG_ERROR("files is empty");
        return false;
    }
    CArchiveWriter writer;
    if (!writer.Open(zipPath))
        return false;
    const bool packed = detail::PackItems(writer, paths);
    return writer.Close() && packed;
}

bool CompressDir(const QString& dirPath, const QString& zipPath) {
    return CompressFiles(std::vector<QString>{dirPath}, zipPath);
}

}  // namespace _zip
