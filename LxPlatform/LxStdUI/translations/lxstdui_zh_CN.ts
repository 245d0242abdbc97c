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
        <name>LxDevTools</name>
        <message>
            <source>%1s</source>
            <translation>%1s</translation>
        </message>
        <message>
            <source>Card</source>
            <translation>Card</translation>
        </message>
        <message>
            <source>Card Create Performance Info</source>
            <translation>Card Create Performance Info</translation>
        </message>
        <message>
            <source>Cpu使用率</source>
            <translation>Cpu使用率</translation>
        </message>
        <message>
            <source>Cpu使用率: %1%</source>
            <translation>Cpu使用率: %1%</translation>
        </message>
        <message>
            <source>FPS</source>
            <translation>FPS</translation>
        </message>
        <message>
            <source>FPS监控工具</source>
            <translation>FPS监控工具</translation>
        </message>
        <message>
            <source>IO Read times</source>
            <translation>IO Read times</translation>
        </message>
        <message>
            <source>IO Read times: %1次</source>
            <translation>IO Read times: %1次</translation>
        </message>
        <message>
            <source>IO Write times</source>
            <translation>IO Write times</translation>
        </message>
        <message>
            <source>IO Write times: %1次</source>
            <translation>IO Write times: %1次</translation>
        </message>
        <message>
            <source>IO使用情况</source>
            <translation>IO使用情况</translation>
        </message>
        <message>
            <source>IO统计</source>
            <translation>IO统计</translation>
        </message>
        <message>
            <source>QObject总数</source>
            <translation>QObject总数</translation>
        </message>
        <message>
            <source>QObject总数: %1</source>
            <translation>QObject总数: %1</translation>
        </message>
        <message>
            <source>Qt对象池(QWidgets/QObjects)</source>
            <translation>Qt对象池(QWidgets/QObjects)</translation>
        </message>
        <message>
            <source>Recv </source>
            <translation>Recv </translation>
        </message>
        <message>
            <source>Sent </source>
            <translation>Sent </translation>
        </message>
        <message>
            <source>Total size of IO reads </source>
            <translation>Total size of IO reads </translation>
        </message>
        <message>
            <source>Total size of IO reads : %1字节</source>
            <translation>Total size of IO reads : %1字节</translation>
        </message>
        <message>
            <source>Total size of IO writes </source>
            <translation>Total size of IO writes </translation>
        </message>
        <message>
            <source>Total size of IO writes : %1字节</source>
            <translation>Total size of IO writes : %1字节</translation>
        </message>
        <message>
            <source>UI Spy</source>
            <translation>UI Spy</translation>
        </message>
        <message>
            <source>tcp recv: %1kb/s</source>
            <translation>tcp recv: %1kb/s</translation>
        </message>
        <message>
            <source>tcp send: %1kb/s</source>
            <translation>tcp send: %1kb/s</translation>
        </message>
        <message>
            <source>tcp 发送: %1kb</source>
            <translation>tcp 发送: %1kb</translation>
        </message>
        <message>
            <source>tcp 发送: %1kb/s</source>
            <translation>tcp 发送: %1kb/s</translation>
        </message>
        <message>
            <source>tcp 接收: %1kb</source>
            <translation>tcp 接收: %1kb</translation>
        </message>
        <message>
            <source>tcp 接收: %1kb/s</source>
            <translation>tcp 接收: %1kb/s</translation>
        </message>
        <message>
            <source>上行</source>
            <translation>上行</translation>
        </message>
        <message>
            <source>上行: %1kb</source>
            <translation>上行: %1kb</translation>
        </message>
        <message>
            <source>下行</source>
            <translation>下行</translation>
        </message>
        <message>
            <source>下行: %1kb</source>
            <translation>下行: %1kb</translation>
        </message>
        <message>
            <source>位置</source>
            <translation>位置</translation>
        </message>
        <message>
            <source>信息</source>
            <translation>信息</translation>
        </message>
        <message>
            <source>停止</source>
            <translation>停止</translation>
        </message>
        <message>
            <source>全部运行</source>
            <translation>全部运行</translation>
        </message>
        <message>
            <source>共 %1 项</source>
            <translation>共 %1 项</translation>
        </message>
        <message>
            <source>共 %1 项：通过 %2，失败 %3，耗时 %4 ms</source>
            <translation>共 %1 项：通过 %2，失败 %3，耗时 %4 ms</translation>
        </message>
        <message>
            <source>内存</source>
            <translation>内存</translation>
        </message>
        <message>
            <source>内存/Cpu使用率</source>
            <translation>内存/Cpu使用率</translation>
        </message>
        <message>
            <source>内存: %1MB</source>
            <translation>内存: %1MB</translation>
        </message>
        <message>
            <source>写次数</source>
            <translation>写次数</translation>
        </message>
        <message>
            <source>刷新</source>
            <translation>刷新</translation>
        </message>
        <message>
            <source>刷新列表</source>
            <translation>刷新列表</translation>
        </message>
        <message>
            <source>单元测试</source>
            <translation>单元测试</translation>
        </message>
        <message>
            <source>名称</source>
            <translation>名称</translation>
        </message>
        <message>
            <source>失败</source>
            <translation>失败</translation>
        </message>
        <message>
            <source>对象池</source>
            <translation>对象池</translation>
        </message>
        <message>
            <source>峰值FPS</source>
            <translation>峰值FPS</translation>
        </message>
        <message>
            <source>已发送 %1kb</source>
            <translation>已发送 %1kb</translation>
        </message>
        <message>
            <source>已接收 %1kb</source>
            <translation>已接收 %1kb</translation>
        </message>
        <message>
            <source>已销毁数</source>
            <translation>已销毁数</translation>
        </message>
        <message>
            <source>平均FPS</source>
            <translation>平均FPS</translation>
        </message>
        <message>
            <source>平均创建控件数量</source>
            <translation>平均创建控件数量</translation>
        </message>
        <message>
            <source>平均可见控件数量</source>
            <translation>平均可见控件数量</translation>
        </message>
        <message>
            <source>平均耗时（ms）</source>
            <translation>平均耗时（ms）</translation>
        </message>
        <message>
            <source>开始</source>
            <translation>开始</translation>
        </message>
        <message>
            <source>当前QObject数</source>
            <translation>当前QObject数</translation>
        </message>
        <message>
            <source>当前QObject数: %1</source>
            <translation>当前QObject数: %1</translation>
        </message>
        <message>
            <source>当前QWidget数</source>
            <translation>当前QWidget数</translation>
        </message>
        <message>
            <source>当前QWidget数: %1</source>
            <translation>当前QWidget数: %1</translation>
        </message>
        <message>
            <source>性能监控</source>
            <translation>性能监控</translation>
        </message>
        <message>
            <source>总Push数</source>
            <translation>总Push数</translation>
        </message>
        <message>
            <source>总Push数: %1</source>
            <translation>总Push数: %1</translation>
        </message>
        <message>
            <source>总发送</source>
            <translation>总发送</translation>
        </message>
        <message>
            <source>总发送: %1kb</source>
            <translation>总发送: %1kb</translation>
        </message>
        <message>
            <source>总接收</source>
            <translation>总接收</translation>
        </message>
        <message>
            <source>总接收: %1kb</source>
            <translation>总接收: %1kb</translation>
        </message>
        <message>
            <source>总数</source>
            <translation>总数</translation>
        </message>
        <message>
            <source>总次数</source>
            <translation>总次数</translation>
        </message>
        <message>
            <source>总请求数</source>
            <translation>总请求数</translation>
        </message>
        <message>
            <source>总请求数: %1</source>
            <translation>总请求数: %1</translation>
        </message>
        <message>
            <source>时间:</source>
            <translation>时间:</translation>
        </message>
        <message>
            <source>时间：%1:%2:%3</source>
            <translation>时间：%1:%2:%3</translation>
        </message>
        <message>
            <source>时间：00:00:00</source>
            <translation>时间：00:00:00</translation>
        </message>
        <message>
            <source>显示记录</source>
            <translation>显示记录</translation>
        </message>
        <message>
            <source>有效平均FPS</source>
            <translation>有效平均FPS</translation>
        </message>
        <message>
            <source>未运行</source>
            <translation>未运行</translation>
        </message>
        <message>
            <source>查看业务看片创建性能数据</source>
            <translation>查看业务看片创建性能数据</translation>
        </message>
        <message>
            <source>活跃数</source>
            <translation>活跃数</translation>
        </message>
        <message>
            <source>测试项</source>
            <translation>测试项</translation>
        </message>
        <message>
            <source>等待</source>
            <translation>等待</translation>
        </message>
        <message>
            <source>类名</source>
            <translation>类名</translation>
        </message>
        <message>
            <source>结果</source>
            <translation>结果</translation>
        </message>
        <message>
            <source>网络监控</source>
            <translation>网络监控</translation>
        </message>
        <message>
            <source>置顶</source>
            <translation>置顶</translation>
        </message>
        <message>
            <source>耗时（ms）</source>
            <translation>耗时（ms）</translation>
        </message>
        <message>
            <source>读次数</source>
            <translation>读次数</translation>
        </message>
        <message>
            <source>路径</source>
            <translation>路径</translation>
        </message>
        <message>
            <source>运行中…</source>
            <translation>运行中…</translation>
        </message>
        <message>
            <source>运行选中</source>
            <translation>运行选中</translation>
        </message>
        <message>
            <source>通过</source>
            <translation>通过</translation>
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
