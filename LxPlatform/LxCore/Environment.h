#pragma once
// What the product knows about where it runs: device id, client type, version, language, edition.
// The device id is derived from the machine id (stable across runs and users of one machine).

#include <LxCore/LxCoreExport.h>
#include <QObject>
#include <QString>

namespace core {
namespace environment {

LXCORE_EXPORT QString GetDeviceId();          // 16 hex digits, stable per machine
LXCORE_EXPORT int GetClientType();            // 1: desktop Linux, 2: desktop Windows, 3: desktop macOS
LXCORE_EXPORT QString GetAppVersion();        // application version, "0.0.0" when the host set none
LXCORE_EXPORT QString GetServerLanguage();    // "zh-CN" or "en-US", from the current language id
LXCORE_EXPORT bool IsInternationalEdition();  // the edition flag; set by the host
LXCORE_EXPORT void SetInternationalEdition(bool bInternational);

}  // namespace environment

namespace lang {

enum LanguageId : int { kLangZhCN = 1, kLangEnUS = 2 };

LXCORE_EXPORT int GetLanguageId();
// Changes the language; emits Notifier::languageChanged when it really changed.
LXCORE_EXPORT void SetLanguageId(int i32LangId);
LXCORE_EXPORT QString GetLanguageCode();  // "zh_CN" / "en_US"

class LXCORE_EXPORT Notifier : public QObject {
    Q_OBJECT
public:
    static Notifier* instance();
Q_SIGNALS:
    void languageChanged(int i32LangId);
};

}  // namespace lang
}  // namespace core
