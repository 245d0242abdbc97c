<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>gui_helper</name>
    <message>
        <source>Tip</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>The page failed to load</source>
        <translation>页面加载失败</translation>
    </message>
    <message>
        <source>Got it</source>
        <translation>我知道了</translation>
    </message>
</context>
<context>
    <name>rich_text_data_image</name>
    <message>
        <source>[Image]</source>
        <translation>[图片]</translation>
    </message>
</context>
<context>
    <name>rich_text_data_emotion</name>
    <message>
        <source>[Emoticon]</source>
        <translation>[表情]</translation>
    </message>
</context>
<context>
    <name>zip_helper</name>
    <message>
        <source>Archive written</source>
        <translation>压缩包已生成</translation>
    </message>
    <message>
        <source>Archive failed</source>
        <translation>压缩失败</translation>
    </message>
</context>
<context>
    <name>common</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Loading</source>
        <translation>加载中</translation>
    </message>
    <message>
        <source>Failed to load</source>
        <translation>加载失败</translation>
    </message>
</context>
<context>
    <name>image_preview</name>
    <message>
        <source>Copied</source>
        <translation>复制成功</translation>
    </message>
    <message>
        <source>Copy failed</source>
        <translation>复制失败</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>复制</translation>
    </message>
    <message>
        <source>Translation failed: this picture format cannot be translated</source>
        <translation>翻译失败，不支持翻译的图片格式</translation>
    </message>
    <message>
        <source>Translation failed, please try again</source>
        <translation>翻译失败，请重试</translation>
    </message>
    <message>
        <source>No translation result</source>
        <translation>没有翻译结果</translation>
    </message>
    <message>
        <source>Previous</source>
        <translation>上一张</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>下一张</translation>
    </message>
    <message>
        <source>Translate</source>
        <translation>翻译</translation>
    </message>
    <message>
        <source>Show original</source>
        <translation>查看原图</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>重新加载</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>放大</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>缩小</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>图片</translation>
    </message>
</context>
</TS>
