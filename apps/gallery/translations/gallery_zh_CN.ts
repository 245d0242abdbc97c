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
