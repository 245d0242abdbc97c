#include "GalleryI18n.h"

#include <LxStdUI/MultiLang.h>

void InstallGalleryTranslator() {
    lxstdui_multi_lang::FollowLanguage(QStringLiteral(":/gallery/i18n/gallery_%1.qm"), "Gallery");
}
