#pragma once
// Stock chips: text blocks (see LxTextBlockObjectHandlerBase.h) for stock tokens in editors.

#include <LxUIKit/LxTextObjectHandler/LxTextBlockObjectHandlerBase.h>
#include <LxUIKit/LxUIKitExport.h>

class LXUIKIT_EXPORT CLxStockObjectHandler : public CLxTextBlockObjectHandlerBase {
    Q_OBJECT
public:
    explicit CLxStockObjectHandler(QObject* pParent = nullptr) : CLxTextBlockObjectHandlerBase(pParent) {}
};
