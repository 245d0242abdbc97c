#pragma once
// The emoticon object handler (CLxEmotionObjectHandler, see LxEmotionObjectHandler_p.h), for hosts
// that embed emoticons in their own documents:
//
//   doc->documentLayout()->registerHandler(QTextFormat::UserObject + 4, CreateLxEmotionObjectHandler(doc));
#include <LxUIKit/LxUIKitExport.h>

class QObject;

// A new emoticon handler owned by pParent (a QObject implementing QTextObjectInterface).
LXUIKIT_EXPORT QObject* CreateLxEmotionObjectHandler(QObject* pParent);
