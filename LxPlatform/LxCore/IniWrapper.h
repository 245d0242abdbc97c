#pragma once
// CIniWrapper: typed access to one INI file through QSettings (IniFormat). Each call addresses
// "section/key"; writes are synced to disk at once so a crash loses nothing.

#include <LxCore/LxCoreExport.h>
#include <QSettings>
#include <QString>
#include <QVariant>

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
    // Returns false when the file cannot be written.
    bool SetValue(const QString& section, const QString& key, const QVariant& value);
    bool Remove(const QString& section, const QString& key);

private:
    std::unique_ptr<QSettings> m_pSettings;
};

// Application boolean settings ("dev_auto_open_std_out" and the like), kept in the product's
// settings file, section "AppSettings".
namespace app_setting {
LXCORE_EXPORT bool GetBool(const QString& key, bool def = false);
LXCORE_EXPORT bool SetBool(const QString& key, bool value);
}  // namespace app_setting

}  // namespace core
