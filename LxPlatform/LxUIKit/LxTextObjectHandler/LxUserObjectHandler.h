#pragma once
// User chips: text blocks (see LxTextBlockObjectHandlerBase.h) for user mentions in editors.

#include <LxUIKit/LxTextObjectHandler/LxTextBlockObjectHandlerBase.h>
#include <LxUIKit/LxUIKitExport.h>

class LXUIKIT_EXPORT CLxUserObjectHandler : public CLxTextBlockObjectHandlerBase {
    Q_OBJECT
public:
    explicit CLxUserObjectHandler(QObject* pParent = nullptr) : CLxTextBlockObjectHandlerBase(pParent) {}
};
