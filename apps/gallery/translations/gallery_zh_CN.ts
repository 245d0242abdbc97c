<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>ArchivePage</name>
    <message>
        <source>Archive</source>
        <translation>压缩包</translation>
    </message>
    <message>
        <source>Pack a folder (hidden files included, links left out) and unpack an archive. Unpacking refuses archives whose entries would leave the destination.</source>
        <translation>将文件夹打包为压缩包（包含隐藏文件，不含链接），或解压压缩包。若压缩包中有条目会写到目标文件夹之外，解压将被拒绝。</translation>
    </message>
    <message>
        <source>Folder to pack</source>
        <translation>要打包的文件夹</translation>
    </message>
    <message>
        <source>Archive file</source>
        <translation>压缩包文件</translation>
    </message>
    <message>
        <source>Unpack into</source>
        <translation>解压到</translation>
    </message>
    <message>
        <source>Pack folder</source>
        <translation>打包文件夹</translation>
    </message>
    <message>
        <source>Unpack archive</source>
        <translation>解压压缩包</translation>
    </message>
    <message>
        <source>Entries in the archive</source>
        <translation>压缩包中的条目</translation>
    </message>
    <message>
        <source>Entry</source>
        <translation>条目</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>大小</translation>
    </message>
    <message>
        <source>Mode</source>
        <translation>权限</translation>
    </message>
    <message>
        <source>Modified</source>
        <translation>修改时间</translation>
    </message>
    <message>
        <source>Files written by unpacking</source>
        <translation>解压写出的文件</translation>
    </message>
    <message>
        <source>File</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>Packed %1 into %2</source>
        <translation>已将 %1 打包为 %2</translation>
    </message>
    <message>
        <source>Packing failed; the log says why</source>
        <translation>打包失败，原因请查看日志</translation>
    </message>
    <message>
        <source>Unpacked into %1</source>
        <translation>已解压到 %1</translation>
    </message>
    <message>
        <source>Unpacking refused or failed; the log says why</source>
        <translation>解压被拒绝或失败，原因请查看日志</translation>
    </message>
    <message>
        <source>Browse…</source>
        <translation>浏览…</translation>
    </message>
    <message>
        <source>Zip archives (*.zip)</source>
        <translation>Zip 压缩包 (*.zip)</translation>
    </message>
    <message>
        <source>folder</source>
        <translation>文件夹</translation>
    </message>
</context>
<context>
    <name>DevToolsPage</name>
    <message>
        <source>Developer tools</source>
        <translation>开发者工具</translation>
    </message>
    <message>
        <source>Press Ctrl+F9 anywhere in the gallery to open the developer tools window: every log record of every thread, live, coloured and filtered. Ctrl+F10 opens the widget inspector.</source>
        <translation>在图库任意位置按 Ctrl+F9 打开开发者工具窗口：实时查看每个线程的每条日志，按类型着色并可过滤。Ctrl+F10 打开控件检查器。</translation>
    </message>
    <message>
        <source>This build has no developer tools.</source>
        <translation>此版本未包含开发者工具。</translation>
    </message>
    <message>
        <source> records/s</source>
        <translation> 条/秒</translation>
    </message>
    <message>
        <source>Start logging</source>
        <translation>开始写日志</translation>
    </message>
    <message>
        <source>Threads</source>
        <translation>线程数</translation>
    </message>
    <message>
        <source>Rate</source>
        <translation>速率</translation>
    </message>
    <message>
        <source>Stop logging</source>
        <translation>停止写日志</translation>
    </message>
    <message>
        <source>%1 records written</source>
        <translation>已写入 %1 条</translation>
    </message>
    <message>
        <source>Open the log viewer</source>
        <translation>打开日志查看器</translation>
    </message>
    <message>
        <source>Open an application-modal dialog</source>
        <translation>打开应用程序模态对话框</translation>
    </message>
    <message>
        <source>Show a stray parentless widget</source>
        <translation>显示无父对象的游离控件</translation>
    </message>
    <message>
        <source>Add a tab to the tools window</source>
        <translation>向工具窗口添加标签页</translation>
    </message>
    <message>
        <source>Application-modal dialog</source>
        <translation>应用程序模态对话框</translation>
    </message>
    <message>
        <source>The gallery is blocked now; the developer tools window still takes clicks and keys.</source>
        <translation>图库现已被阻塞；开发者工具窗口仍可响应点击和按键。</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>A modal dialog is open: try the tools window.</source>
        <translation>模态对话框已打开：请试试工具窗口。</translation>
    </message>
    <message>
        <source>stray</source>
        <translation>游离</translation>
    </message>
    <message>
        <source>A stray QLabel was shown: the log has a &quot;suspected unexpected popup&quot; line.</source>
        <translation>游离的 QLabel 已显示：日志中有一行“suspected unexpected popup”。</translation>
    </message>
    <message>
        <source>Gallery %1</source>
        <translation>图库 %1</translation>
    </message>
    <message>
        <source>Tab %1 added by the gallery.</source>
        <translation>图库添加的标签页 %1。</translation>
    </message>
    <message>
        <source>Tab &quot;Gallery %1&quot; added to the tools window.</source>
        <translation>标签页“图库 %1”已添加到工具窗口。</translation>
    </message>
</context>
<context>
    <name>DiagnosticsPage</name>
    <message>
        <source>Full story</source>
        <translation>全文</translation>
    </message>
    <message>
        <source>Related quotes</source>
        <translation>相关行情</translation>
    </message>
    <message>
        <source>Comment %1</source>
        <translation>评论 %1</translation>
    </message>
    <message>
        <source>Diagnostics</source>
        <translation>诊断</translation>
    </message>
    <message>
        <source>Price ticker</source>
        <translation>价格走势</translation>
    </message>
    <message>
        <source>FPS: measuring…</source>
        <translation>FPS：测量中…</translation>
    </message>
    <message>
        <source>FPS: %1 now, %2 average, %3 peak</source>
        <translation>FPS：当前 %1，平均 %2，峰值 %3</translation>
    </message>
    <message>
        <source>Open FPS monitor</source>
        <translation>打开 FPS 监控</translation>
    </message>
    <message>
        <source>Card</source>
        <translation>卡片</translation>
    </message>
    <message>
        <source>Average ms</source>
        <translation>平均耗时（ms）</translation>
    </message>
    <message>
        <source>Widgets made</source>
        <translation>创建控件数</translation>
    </message>
    <message>
        <source>Widgets visible</source>
        <translation>可见控件数</translation>
    </message>
    <message>
        <source>Open timing window</source>
        <translation>打开耗时窗口</translation>
    </message>
    <message>
        <source>Cards</source>
        <translation>卡片</translation>
    </message>
    <message>
        <source>Unit tests</source>
        <translation>单元测试</translation>
    </message>
    <message>
        <source>Objects</source>
        <translation>对象</translation>
    </message>
</context>
<context>
    <name>FlyoutsPage</name>
    <message>
        <source>Price alerts</source>
        <translation>价格提醒</translation>
    </message>
    <message>
        <source>%1: panel %2, hidden by the application: %3</source>
        <translation>%1：面板%2，由应用隐藏：%3</translation>
    </message>
    <message>
        <source>hidden</source>
        <translation>已隐藏</translation>
    </message>
    <message>
        <source>shown</source>
        <translation>已显示</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>是</translation>
    </message>
    <message>
        <source>no</source>
        <translation>否</translation>
    </message>
    <message>
        <source>Flyouts</source>
        <translation>浮窗</translation>
    </message>
    <message>
        <source>The panel follows the main window: it hides with it and comes back with it, unless you had hidden it yourself.</source>
        <translation>面板跟随主窗口：主窗口隐藏时一起隐藏，恢复时一起恢复；您自己隐藏的面板除外。</translation>
    </message>
    <message>
        <source>Open panel</source>
        <translation>打开面板</translation>
    </message>
    <message>
        <source>Hide panel</source>
        <translation>隐藏面板</translation>
    </message>
    <message>
        <source>Main window hidden</source>
        <translation>主窗口已隐藏</translation>
    </message>
    <message>
        <source>Main window restored</source>
        <translation>主窗口已恢复</translation>
    </message>
    <message>
        <source>Application exiting</source>
        <translation>应用退出</translation>
    </message>
    <message>
        <source>Follow the main window</source>
        <translation>跟随主窗口</translation>
    </message>
    <message>
        <source>LNTF  Lanternfish Robotics</source>
        <translation>LNTF  灯笼鱼机器人</translation>
    </message>
</context>
<context>
    <name>GalleryPages</name>
    <message>
        <source>Toasts</source>
        <translation>轻提示</translation>
    </message>
    <message>
        <source>Lazy load</source>
        <translation>延迟加载</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>压缩包</translation>
    </message>
    <message>
        <source>Rich text</source>
        <translation>富文本</translation>
    </message>
    <message>
        <source>Web images</source>
        <translation>网络图片</translation>
    </message>
    <message>
        <source>Developer tools</source>
        <translation>开发者工具</translation>
    </message>
    <message>
        <source>Diagnostics</source>
        <translation>诊断</translation>
    </message>
    <message>
        <source>Inspector</source>
        <translation>检查器</translation>
    </message>
    <message>
        <source>Layouts</source>
        <translation>布局</translation>
    </message>
    <message>
        <source>Slideshow</source>
        <translation>轮播</translation>
    </message>
    <message>
        <source>Flyouts</source>
        <translation>浮窗</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Image preview</source>
        <translation>图片预览</translation>
    </message>
</context>
<context>
    <name>GalleryWindow</name>
    <message>
        <source>LxUIKit Gallery</source>
        <translation>LxUIKit 组件库</translation>
    </message>
    <message>
        <source>Theme</source>
        <translation>主题</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>浅色</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>深色</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>语言</translation>
    </message>
    <message>
        <source>Demo</source>
        <translation>演示</translation>
    </message>
    <message>
        <source>Put the current page into its demonstration state</source>
        <translation>让当前页面进入演示状态</translation>
    </message>
</context>
<context>
    <name>ImagePreviewPage</name>
    <message>
        <source>Poster with captions</source>
        <translation>带标题的海报</translation>
    </message>
    <message>
        <source>Tall chart with captions</source>
        <translation>带标题的竖版图表</translation>
    </message>
    <message>
        <source>Animated GIF (never zoomed)</source>
        <translation>GIF 动图（不缩放）</translation>
    </message>
    <message>
        <source>SVG</source>
        <translation>SVG 矢量图</translation>
    </message>
    <message>
        <source>Photo, 6000 × 4000</source>
        <translation>照片，6000 × 4000</translation>
    </message>
    <message>
        <source>Broken JPEG</source>
        <translation>损坏的 JPEG</translation>
    </message>
    <message>
        <source>Image preview</source>
        <translation>图片预览</translation>
    </message>
    <message>
        <source>Double-click a picture to open it in the preview window. Zoom with the wheel or the title bar, drag a large picture, step with Left and Right, right-click to copy. The translate button sends the picture to the demonstration service.</source>
        <translation>双击图片即可在预览窗口中打开。用滚轮或标题栏缩放，拖动大图，用左右方向键切换，右键复制。翻译按钮会把图片发送到演示翻译服务。</translation>
    </message>
    <message>
        <source>The demonstration translation service could not start.</source>
        <translation>演示翻译服务无法启动。</translation>
    </message>
    <message>
        <source>Demonstration translation service: %1</source>
        <translation>演示翻译服务：%1</translation>
    </message>
    <message>
        <source>Open preview</source>
        <translation>打开预览</translation>
    </message>
    <message>
        <source>Open and translate</source>
        <translation>打开并翻译</translation>
    </message>
</context>
<context>
    <name>InspectorPage</name>
    <message>
        <source>Nested panels: pick the button, then turn the wheel in Figma mode (F2).</source>
        <translation>嵌套面板：选中按钮后，在 Figma 模式（F2）下滚动滚轮。</translation>
    </message>
    <message>
        <source>Place order</source>
        <translation>下单</translation>
    </message>
    <message>
        <source>Open the inspector (Ctrl+F10)</source>
        <translation>打开检查器（Ctrl+F10）</translation>
    </message>
    <message>
        <source>Order menu</source>
        <translation>委托菜单</translation>
    </message>
    <message>
        <source>Buy</source>
        <translation>买入</translation>
    </message>
    <message>
        <source>Sell</source>
        <translation>卖出</translation>
    </message>
    <message>
        <source>Cancel all</source>
        <translation>全部撤单</translation>
    </message>
    <message>
        <source>Watchlist</source>
        <translation>自选</translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation>提醒</translation>
    </message>
    <message>
        <source>News</source>
        <translation>资讯</translation>
    </message>
    <message>
        <source>Ticker</source>
        <translation>代码</translation>
    </message>
    <message>
        <source>Last</source>
        <translation>最新价</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>涨跌幅</translation>
    </message>
    <message>
        <source>Portfolios</source>
        <translation>组合</translation>
    </message>
    <message>
        <source>Growth</source>
        <translation>成长</translation>
    </message>
    <message>
        <source>Income</source>
        <translation>收益</translation>
    </message>
    <message>
        <source>Northwind Tools</source>
        <translation>北风工具</translation>
    </message>
    <message>
        <source>Bluepeak Energy</source>
        <translation>蓝峰能源</translation>
    </message>
    <message>
        <source>Orchard Robotics</source>
        <translation>果园机器人</translation>
    </message>
    <message>
        <source>Kestrel Labs</source>
        <translation>红隼实验室</translation>
    </message>
</context>
<context>
    <name>LayoutPage</name>
    <message>
        <source>Anchor layout</source>
        <translation>锚点布局</translation>
    </message>
    <message>
        <source>Each block is placed by the text in its &quot;AnchorLayout&quot; property. Pick a block, edit its flags, or build flags below and apply them.</source>
        <translation>每个色块按其 &quot;AnchorLayout&quot; 属性中的文字摆放。选择一个色块并编辑它的标志，或在下方生成标志后应用。</translation>
    </message>
    <message>
        <source>Flags of the selected block</source>
        <translation>所选色块的标志</translation>
    </message>
    <message>
        <source>Flag builder</source>
        <translation>标志生成器</translation>
    </message>
    <message>
        <source>Align to parent</source>
        <translation>对齐父控件</translation>
    </message>
    <message>
        <source>Align to previous</source>
        <translation>对齐上一个</translation>
    </message>
    <message>
        <source>Margin</source>
        <translation>边距</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>清空</translation>
    </message>
    <message>
        <source>Apply to block</source>
        <translation>应用到色块</translation>
    </message>
    <message>
        <source>Banner</source>
        <translation>横幅</translation>
    </message>
    <message>
        <source>Badge</source>
        <translation>角标</translation>
    </message>
    <message>
        <source>Card</source>
        <translation>卡片</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>便签</translation>
    </message>
    <message>
        <source>Footer</source>
        <translation>页脚</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>左</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>右</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>上</translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation>下</translation>
    </message>
    <message>
        <source>Centre</source>
        <translation>居中</translation>
    </message>
    <message>
        <source>Horizontal centre</source>
        <translation>水平居中</translation>
    </message>
    <message>
        <source>Vertical centre</source>
        <translation>垂直居中</translation>
    </message>
</context>
<context>
    <name>LazyLoadPage</name>
    <message>
        <source>content created for %1 of %2 rows</source>
        <translation>已为 %2 行中的 %1 行创建内容</translation>
    </message>
    <message>
        <source>Row %1 — built lazily</source>
        <translation>第 %1 行 — 延迟创建</translation>
    </message>
    <message>
        <source>Lazy load</source>
        <translation>延迟加载</translation>
    </message>
    <message>
        <source>Each list holds %1 containers. Scroll the right list and watch its counter: content is made only when a row is painted.</source>
        <translation>每个列表包含 %1 个容器。滚动右侧列表并留意它的计数：某一行真正被绘制时才会创建其内容。</translation>
    </message>
    <message>
        <source>Create on show</source>
        <translation>显示时创建</translation>
    </message>
    <message>
        <source>Create on paint</source>
        <translation>绘制时创建</translation>
    </message>
</context>
<context>
    <name>RichTextPage</name>
    <message>
        <source>Text</source>
        <translation>文本</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>图片</translation>
    </message>
    <message>
        <source>User</source>
        <translation>用户</translation>
    </message>
    <message>
        <source>Stock</source>
        <translation>股票</translation>
    </message>
    <message>
        <source>Portfolio</source>
        <translation>组合</translation>
    </message>
    <message>
        <source>Emoticon</source>
        <translation>表情</translation>
    </message>
    <message>
        <source>Link</source>
        <translation>链接</translation>
    </message>
    <message>
        <source>Emoji</source>
        <translation>表情符号</translation>
    </message>
    <message>
        <source>Token</source>
        <translation>标记</translation>
    </message>
    <message>
        <source>%1 · id %2 · %3</source>
        <translation>%1 · ID %2 · %3</translation>
    </message>
    <message>
        <source>Collapse</source>
        <translation>收起</translation>
    </message>
    <message>
        <source>Expand</source>
        <translation>展开</translation>
    </message>
    <message>
        <source>Rich text</source>
        <translation>富文本</translation>
    </message>
    <message>
        <source>%1 posts with stocks, portfolios, mentions, links, pictures, emoji and emoticons, each cut at %2 lines. Click a token for a toast, hover one to see it below, select text and copy it with Ctrl+C. Rows are built when first painted.</source>
        <translation>共 %1 条帖子，含股票、组合、@提及、链接、图片、表情符号和表情，每条最多显示 %2 行。点击标记会弹出提示，鼠标悬停可在下方查看，选中文字后可用 Ctrl+C 复制。每条帖子在首次绘制时才创建。</translation>
    </message>
    <message>
        <source>Hovering: %1</source>
        <translation>悬停：%1</translation>
    </message>
    <message>
        <source>Hover a token to see it here.</source>
        <translation>将鼠标悬停在标记上，可在此处查看。</translation>
    </message>
    <message>
        <source>posts built: %1 of %2</source>
        <translation>已创建帖子：%1 / %2</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>Notifications</source>
        <translation>通知</translation>
    </message>
    <message>
        <source>Restore defaults</source>
        <translation>恢复默认</translation>
    </message>
    <message>
        <source>Price alerts</source>
        <translation>价格提醒</translation>
    </message>
    <message>
        <source>Play a sound</source>
        <translation>播放声音</translation>
    </message>
    <message>
        <source>Show a badge</source>
        <translation>显示角标</translation>
    </message>
    <message>
        <source>Quote colours</source>
        <translation>行情颜色</translation>
    </message>
    <message>
        <source>Red for rises</source>
        <translation>红涨绿跌</translation>
    </message>
    <message>
        <source>Green for rises</source>
        <translation>绿涨红跌</translation>
    </message>
    <message>
        <source>Account</source>
        <translation>账户</translation>
    </message>
    <message>
        <source>Linked brokerage account</source>
        <translation>已关联的券商账户</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>更换</translation>
    </message>
    <message>
        <source>Downloaded pictures and charts are kept on this computer and removed after thirty days without use.</source>
        <translation>下载的图片和图表保存在本机，三十天未使用后自动删除。</translation>
    </message>
    <message>
        <source>Privacy settings</source>
        <translation>隐私设置</translation>
    </message>
    <message>
        <source>Trading</source>
        <translation>交易</translation>
    </message>
    <message>
        <source>Nickname</source>
        <translation>昵称</translation>
    </message>
    <message>
        <source>Chime</source>
        <translation>风铃</translation>
    </message>
    <message>
        <source>Bell</source>
        <translation>铃声</translation>
    </message>
    <message>
        <source>None</source>
        <translation>无</translation>
    </message>
    <message>
        <source>Order fill sound</source>
        <translation>成交提示音</translation>
    </message>
    <message>
        <source>5 minutes before the open</source>
        <translation>开盘前 5 分钟</translation>
    </message>
    <message>
        <source>At the open</source>
        <translation>开盘时</translation>
    </message>
    <message>
        <source>Reminder</source>
        <translation>提醒</translation>
    </message>
    <message>
        <source>Harborline Securities ••••7781</source>
        <translation>港湾线证券 ••••7781</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 MB</translation>
    </message>
</context>
<context>
    <name>SlideshowPage</name>
    <message>
        <source>Slideshow</source>
        <translation>轮播</translation>
    </message>
    <message>
        <source>Native slides and web slides; the last web slide points to a missing file and stays hidden after its retries. Drag or click the dots to page.</source>
        <translation>本地幻灯片与网络幻灯片；最后一张网络幻灯片指向不存在的文件，重试后仍保持隐藏。拖动或点击圆点即可翻页。</translation>
    </message>
    <message>
        <source>Add the web slides again</source>
        <translation>再次添加网络幻灯片</translation>
    </message>
    <message>
        <source>Spring research week: five sectors in five days</source>
        <translation>春季研究周：五天看五个行业</translation>
    </message>
    <message>
        <source>Zero-fee transfers until the end of the month</source>
        <translation>月底前转账免手续费</translation>
    </message>
    <message>
        <source>Quarterly outlook webinar</source>
        <translation>季度展望网络研讨会</translation>
    </message>
</context>
<context>
    <name>ToastPage</name>
    <message>
        <source>Success</source>
        <translation>成功</translation>
    </message>
    <message>
        <source>Failure</source>
        <translation>失败</translation>
    </message>
    <message>
        <source>Neutral</source>
        <translation>中性</translation>
    </message>
    <message>
        <source>Toasts</source>
        <translation>轻提示</translation>
    </message>
    <message>
        <source>A toast shows a short message over everything and deletes itself. Up to one second it appears below the middle of the screen; longer toasts slide up from the bottom edge.</source>
        <translation>轻提示在所有内容之上显示一条简短消息，随后自行消失。时长不超过一秒的提示出现在屏幕中部偏下；更长的提示从屏幕底边向上滑入。</translation>
    </message>
    <message>
        <source>Order placed: 100 shares</source>
        <translation>下单成功：100 股</translation>
    </message>
    <message>
        <source>Toast text</source>
        <translation>提示文字</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 毫秒</translation>
    </message>
    <message>
        <source>%1  %2, %3 ms: %4</source>
        <translation>%1  %2，%3 毫秒：%4</translation>
    </message>
    <message>
        <source>Open %1 (no handler)</source>
        <translation>打开 %1（无处理程序）</translation>
    </message>
    <message>
        <source>Shown</source>
        <translation>已显示</translation>
    </message>
</context>
<context>
    <name>WebImagesPage</name>
    <message>
        <source>JPEG · rounded 12</source>
        <translation>JPEG · 圆角 12</translation>
    </message>
    <message>
        <source>same URL · 1:1 crop, circle, border</source>
        <translation>同一 URL · 1:1 裁剪、圆形、描边</translation>
    </message>
    <message>
        <source>PNG · natural size × 0.75</source>
        <translation>PNG · 原始尺寸 × 0.75</translation>
    </message>
    <message>
        <source>PNG · top corners, border</source>
        <translation>PNG · 顶部圆角、描边</translation>
    </message>
    <message>
        <source>WebP still · top half</source>
        <translation>WebP 静图 · 上半部分</translation>
    </message>
    <message>
        <source>GIF · animated</source>
        <translation>GIF · 动图</translation>
    </message>
    <message>
        <source>WebP · animated, round</source>
        <translation>WebP · 动图、圆形</translation>
    </message>
    <message>
        <source>same GIF URL · shared movie</source>
        <translation>同一 GIF URL · 共享动画</translation>
    </message>
    <message>
        <source>SVG · stretched</source>
        <translation>SVG · 拉伸</translation>
    </message>
    <message>
        <source>SVGZ · natural size</source>
        <translation>SVGZ · 原始尺寸</translation>
    </message>
    <message>
        <source>GIF named .png</source>
        <translation>名为 .png 的 GIF</translation>
    </message>
    <message>
        <source>missing file</source>
        <translation>文件不存在</translation>
    </message>
    <message>
        <source>truncated JPEG</source>
        <translation>残缺的 JPEG</translation>
    </message>
    <message>
        <source>HTML named .svg</source>
        <translation>名为 .svg 的 HTML</translation>
    </message>
    <message>
        <source>Web images</source>
        <translation>网络图片</translation>
    </message>
    <message>
        <source>Every picture below is fetched through the download delegate, decoded once into the shared image cache and shown with its own corners, crop, border and scale. Failing pictures retry twice through the reload helper, then show the failure placeholder. Switch the theme to see the placeholders follow it.</source>
        <translation>下方每张图片都经由下载委托获取，只解码一次并存入共享图片缓存，再按各自的圆角、裁剪、描边和缩放显示。加载失败的图片会由重载助手重试两次，之后显示失败占位图。切换主题可以看到占位图随之变化。</translation>
    </message>
    <message>
        <source>Reload all</source>
        <translation>全部重新加载</translation>
    </message>
    <message>
        <source>Clear cache</source>
        <translation>清空缓存</translation>
    </message>
    <message>
        <source>Load any picture: https://…, file:///…, or a local path</source>
        <translation>加载任意图片：https://…、file:///… 或本地路径</translation>
    </message>
    <message>
        <source>Load</source>
        <translation>加载</translation>
    </message>
    <message>
        <source>Type an address and press Load.</source>
        <translation>输入地址后点击“加载”。</translation>
    </message>
    <message>
        <source>loading…</source>
        <translation>加载中…</translation>
    </message>
    <message>
        <source>Loading %1 …</source>
        <translation>正在加载 %1 …</translation>
    </message>
    <message>
        <source>cache emptied (%1 pictures, %2 movies, %3 SVG)</source>
        <translation>缓存已清空（%1 张图片、%2 个动画、%3 个 SVG）</translation>
    </message>
    <message>
        <source> · from cache</source>
        <translation> · 来自缓存</translation>
    </message>
    <message>
        <source>%1, retry %2 of %3…</source>
        <translation>%1，第 %2/%3 次重试…</translation>
    </message>
    <message>
        <source>download failed</source>
        <translation>下载失败</translation>
    </message>
    <message>
        <source>cannot decode</source>
        <translation>无法解码</translation>
    </message>
    <message>
        <source>failed after %1 attempts, placeholder shown</source>
        <translation>尝试 %1 次后失败，显示占位图</translation>
    </message>
    <message>
        <source>Failed after %1 attempts: %2</source>
        <translation>尝试 %1 次后失败：%2</translation>
    </message>
    <message>
        <source>still picture</source>
        <translation>静态图片</translation>
    </message>
    <message>
        <source>SVG</source>
        <translation>SVG 矢量图</translation>
    </message>
    <message>
        <source>animation</source>
        <translation>动画</translation>
    </message>
    <message>
        <source>, from the cache</source>
        <translation>，来自缓存</translation>
    </message>
    <message>
        <source>no download delegate installed</source>
        <translation>未安装下载委托</translation>
    </message>
    <message>
        <source>Downloads asked: %1 (network %2, already on disk %3, local files %4)</source>
        <translation>下载请求：%1（网络 %2，磁盘已有 %3，本地文件 %4）</translation>
    </message>
    <message>
        <source>%1 · Cache hits: %2 · Failures: %3
In the cache: %4 pictures, %5 movies, %6 SVG, %7 MiB%8</source>
        <translation>%1 · 缓存命中：%2 · 失败：%3
缓存中：%4 张图片、%5 个动画、%6 个 SVG，共 %7 MiB%8</translation>
    </message>
</context>
</TS>
