#pragma once
// CIniWrapper: typed access to one INI file through QSettings (IniFormat). Each call addresses
// "section/key"; writes are synced to disk at once so a crash loses nothing.
//
// Writes are atomic: the new content goes to a temporary file that replaces the old one only when
// it was written completely. A write that fails (a full disk, a read-only folder) is logged,
// answered with false and undone: the file keeps its previous content, and neither this object nor
// any other reader in the process sees the refused value, nor is it written later with another
// change.

#include <LxCore/LxCoreExport.h>
#include <QSettings>
#include <QString>
#include <QVariant>

#include <functional>
#include <memory>

namespace core {

class LXCORE_EXPORT CIniWrapper {
public:
    explicit CIniWrapper(const QString& strFilePath);

    QString GetFilePath() const;
    bool HasKey(const QString& section, const QString& key) const;
    QVariant GetValue(const QString& section, const QString& key, const QVariant& def = QVariant()) const;
    QString GetString(const QString& section, const QString& key, const QString& def = QString()) const;
    int GetInt(const QString& section, const QString& key, int def = 0) const;
    bool GetBool(const QString& section, const QString& key, bool def = false) const;
    // Returns false when the file cannot be written; nothing changes then.
    bool SetValue(const QString& section, const QString& key, const QVariant& value);
    bool Remove(const QString& section, const QString& key);

private:
    bool Write(const QString& key, const std::function<void(QSettings&)>& change, const char* failure);

    std::unique_ptr<QSettings> m_pSettings;
};

// Application boolean settings ("dev_auto_open_std_out" and the like), kept in the product's
// settings file, section "AppSettings".
namespace app_setting {
LXCORE_EXPORT bool GetBool(const QString& key, bool def = false);
LXCORE_EXPORT bool SetBool(const QString& key, bool value);
}  // namespace app_setting

}  // namespace core
