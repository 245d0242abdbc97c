#pragma once
// Folders of the product on this machine. The root is $LX_PRODUCT_ROOT when set (tests and
// side-by-side installs use it), otherwise "<generic data location>/LxClient". Folders are created
// on first use.

#include <LxCore/LxCoreExport.h>
#include <QString>

namespace core {
namespace product_path {

LXCORE_EXPORT QString GetRootDir();
// Overrides the root for this process (empty: back to the default). Tests use temporary roots.
LXCORE_EXPORT void SetRootDir(const QString& root);
LXCORE_EXPORT QString GetCommonDir();     // <root>/common
LXCORE_EXPORT QString GetLogDir();        // <root>/log
LXCORE_EXPORT QString GetCacheDir();      // <root>/cache
LXCORE_EXPORT QString GetSettingsDir();   // <root>/settings
LXCORE_EXPORT QString GetSettingsFile();  // <root>/settings/settings.ini

}  // namespace product_path
}  // namespace core
