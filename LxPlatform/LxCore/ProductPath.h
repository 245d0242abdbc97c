#pragma once
// Folders of the product on this machine. The root is $LX_PRODUCT_ROOT when set (tests and
// side-by-side installs use it), otherwise "<generic data location>/LxClient". Folders are created
// on first use.

#include <QString>

namespace core {
namespace product_path {

QString GetRootDir();
// Overrides the root for this process (empty: back to the default). Tests use temporary roots.
void SetRootDir(const QString& root);
QString GetCommonDir();     // <root>/common
QString GetLogDir();        // <root>/log
QString GetCacheDir();      // <root>/cache
QString GetSettingsDir();   // <root>/settings
QString GetSettingsFile();  // <root>/settings/settings.ini

}  // namespace product_path
}  // namespace core
