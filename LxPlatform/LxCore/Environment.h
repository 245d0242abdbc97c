#pragma once
// What the product knows about where it runs: device id, client type, version, language, edition.
// The device id is derived from the machine id (stable across runs and users of one machine).

#include <QObject>
#include <QString>

namespace core {
namespace environment {

QString GetDeviceId();          // 16 hex digits, stable per machine
int GetClientType();            // 1: desktop Linux, 2: desktop Windows, 3: desktop macOS
QString GetAppVersion();        // application version, "0.0.0" when the host set none
QString GetServerLanguage();    // "zh-CN" or "en-US", from the current language id
bool IsInternationalEdition();  // the edition flag; set by the host
void SetInternationalEdition(bool bInternational);

}  // namespace environment

namespace lang {

enum LanguageId : int { kLangZhCN = 1, kLangEnUS = 2 };

int GetLanguageId();
// Changes the language; emits Notifier::languageChanged when it really changed.
void SetLanguageId(int i32LangId);
QString GetLanguageCode();  // "zh_CN" / "en_US"

class Notifier : public QObject {
    Q_OBJECT
public:
    static Notifier* instance();
Q_SIGNALS:
    void languageChanged(int i32LangId);
};

}  // namespace lang
}  // namespace core
