// The command table. Ids are part of the design: settings and families of commands are told apart by arithmetic on
// them.
#include "mainwin/commandTable.h"

#include "mainwin/frmMain.h"

#include <QFile>

namespace {

using Kind = ToolRecord::Kind;
using BandKind = CommandBars::BandKind;
using S = ApplicationSettings;

/// A setting, by the members that lead to it.
template<auto... Path>
auto& setting(ApplicationSettings& settings) {
    return (settings.*....*Path);
}

} // namespace

// clang-format off
const CommandRow commandTable::commands[] = {
    {u"miFile", 1000, u"ファイル(&F)", u"", u"ファイル", u"", Kind::Popup, u"pbFile", Needs::Nothing, nullptr},
    {u"miView", 2000, u"表示(&V)", u"", u"表示", u"", Kind::Popup, u"pbView", Needs::Nothing, nullptr},
    {u"miDraw", 3000, u"描画(&D)", u"", u"描画", u"", Kind::Popup, u"pbDraw", Needs::File, nullptr},
    {u"miTools", 7000, u"ツール(&T)", u"", u"ツール", u"", Kind::Popup, u"pbTools", Needs::Nothing, nullptr},
    {u"miAddIn", 8000, u"アドイン(&A)", u"", u"アドイン", u"", Kind::Popup, u"pbAddIn", Needs::Nothing, nullptr},
    {u"miHelp", 9000, u"ヘルプ(&H)", u"", u"ヘルプ", u"", Kind::Popup, u"pbHelp", Needs::Nothing, nullptr},
    {u"miFileOpen", 1100, u"計算結果ファイルを開く(&O)...", u"計算結果ファイルを開きます。", u"ファイル", u"Ctrl+O", Kind::Button, u"", Needs::Nothing, &frmMain::promptAndOpen},
    {u"miFileSaveLayout", 1200, u"レイアウトの保存(&S)", u"現在の描画設定を計算結果ファイルの隣に保存します。", u"ファイル", u"Ctrl+S", Kind::Button, u"", Needs::File, &frmMain::saveLayout},
    {u"miFilePreview", 1300, u"印刷プレビュー(&V)", u"印刷の結果を画面で確かめます。", u"ファイル", u"", Kind::Button, u"", Needs::File, &frmMain::showPreview},
    {u"miFilePrint", 1400, u"印刷(&P)", u"表示中の図を印刷します。", u"ファイル", u"Ctrl+P", Kind::Button, u"", Needs::File, &frmMain::printOut},
    {u"miFilePrinter", 1500, u"ページ設定(&U)...", u"プリンタ、用紙、余白、ラベルを設定します。", u"ファイル", u"", Kind::Button, u"", Needs::Nothing, &frmMain::editPageLayout},
    {u"miFilePicture", 1550, u"画像を保存(&G)...", u"表示中の図を PNG、SVG、PDF のファイルに保存します。", u"ファイル", u"Ctrl+Shift+S", Kind::Button, u"", Needs::File, &frmMain::savePicture},
    {u"miFilePictureCommand", 1560, u"コマンドとしてコピー(&C)", u"表示中の図を作る velorin-batch のコマンドをクリップボードにコピーします。", u"ファイル", u"", Kind::Button, u"", Needs::File, &frmMain::copyPictureCommand},
    {u"miFileProperty", 1600, u"プロパティ(&I)...", u"計算結果ファイルの内容を表示します。", u"ファイル", u"", Kind::Button, u"", Needs::File, &frmMain::showProperties},
    {u"miFileQuit", 1999, u"終了(&X)", u"プログラムを終了します。", u"ファイル", u"", Kind::Button, u"", Needs::Nothing, &frmMain::quit},
    {u"miViewScale", 2800, u"スケールモード(&M)", u"", u"表示", u"", Kind::Popup, u"pbViewScale", Needs::File, nullptr},
    {u"miViewScaleFixed", 2810, u"固定(&F)", u"ウィンドウの大きさを変えても縮尺を保ちます。", u"表示", u"", Kind::Button, u"", Needs::Nothing, &frmMain::applyScaleMode},
    {u"miViewScaleAutomatic", 2820, u"自動(&A)", u"ウィンドウの大きさに縮尺を合わせます。", u"表示", u"", Kind::Button, u"", Needs::Nothing, &frmMain::applyScaleMode},
    {u"miViewMesh", 2900, u"メッシュ(&H)", u"要素の辺を表示します。", u"表示", u"", Kind::Button, u"", Needs::File, &frmMain::repaint, setting<&S::Window, &WindowSettings::Mesh>},
    {u"miViewZoomIn", 2100, u"拡大(&I)", u"図を拡大します。", u"表示", u"+", Kind::Button, u"", Needs::LargerZoom, &frmMain::zoomIn},
    {u"miViewZoomOut", 2200, u"縮小(&O)", u"図を縮小します。", u"表示", u"-", Kind::Button, u"", Needs::SmallerZoom, &frmMain::zoomOut},
    {u"miViewZoomOff", 2300, u"全体表示(&A)", u"モデル全体を表示します。", u"表示", u"", Kind::Button, u"", Needs::OtherZoom, &frmMain::zoomOff},
    {u"miViewFit", 2310, u"ウィンドウに合わせる(&W)", u"モデル全体がウィンドウに収まるように、縮尺を合わせ直します。", u"表示", u"Home", Kind::Button, u"", Needs::File, &frmMain::fitView},
    {u"miViewFitDisplaced", 2320, u"変位を含める(&D)", u"ウィンドウに合わせるときに、変位を加えた形も収めます。", u"表示", u"", Kind::Button, u"", Needs::Displacement, &frmMain::fitView, setting<&S::Window, &WindowSettings::FitDisplaced>},
    {u"miViewBack", 2330, u"前の表示(&B)", u"前に見ていた範囲に戻ります。", u"表示", u"Alt+Left", Kind::Button, u"", Needs::ViewBefore, &frmMain::goBack},
    {u"miViewForward", 2340, u"次の表示(&N)", u"戻る前に見ていた範囲に進みます。", u"表示", u"Alt+Right", Kind::Button, u"", Needs::ViewAfter, &frmMain::goForward},
    {u"miViewFullScreen", 2350, u"全画面表示(&F)", u"ウィンドウを画面全体に広げ、また元に戻します。", u"表示", u"F11", Kind::Button, u"", Needs::Nothing, &frmMain::toggleFullScreen},
    {u"miViewToolBar", 2400, u"ツールバー(&T)", u"ツールバーの表示を切り替えます。", u"表示", u"", Kind::Button, u"", Needs::Nothing, &frmMain::applyBarVisibility, setting<&S::Window, &WindowSettings::Toolbar>},
    {u"miViewStatusBar", 2500, u"ステータスバー(&S)", u"ステータスバーの表示を切り替えます。", u"表示", u"", Kind::Button, u"", Needs::Nothing, &frmMain::applyBarVisibility, setting<&S::Window, &WindowSettings::Statusbar>},
    {u"miViewRefresh", 2999, u"最新の情報に更新(&R)", u"図を描き直します。", u"表示", u"F5", Kind::Button, u"", Needs::Nothing, &frmMain::repaint},
    {u"miViewReload", 2950, u"ファイルを読み直す(&L)", u"開いているファイルをもう一度読み込みます。", u"表示", u"Ctrl+R", Kind::Button, u"", Needs::ShowOff, &frmMain::reloadFile},
    {u"miViewFollow", 2960, u"自動で読み直す(&U)", u"ファイルに書き込まれたステップを自動で読み込みます。", u"表示", u"", Kind::Button, u"", Needs::Nothing, &frmMain::lookAtFile, setting<&S::Window, &WindowSettings::FollowFile>},
    {u"miViewPointTip", 2600, u"ポインタの値(&P)", u"ポインタの下の節点または要素の座標と値を表示します。", u"表示", u"", Kind::Button, u"", Needs::Nothing, &frmMain::hideTip, setting<&S::Window, &WindowSettings::PointTip>},
    {u"miViewFadeMesh", 2910, u"細かいメッシュを薄く(&Y)", u"３ピクセルより近い要素の辺を薄く表示します。", u"表示", u"", Kind::Button, u"", Needs::File, &frmMain::repaint, setting<&S::Window, &WindowSettings::FadeMesh>},
    {u"miDrawStep", 3100, u"ステップ(&S)", u"表示する計算ステップを選びます。", u"描画", u"", Kind::Combo, u"", Needs::ShowHalted, &frmMain::chooseStep},
    {u"miDrawStepBefore", 3110, u"前のステップ(&B)", u"一つ前の計算ステップを表示します。", u"描画", u"PgUp", Kind::Button, u"", Needs::File, &frmMain::showStepBefore},
    {u"miDrawStepAfter", 3120, u"次のステップ(&N)", u"一つ後の計算ステップを表示します。", u"描画", u"PgDown", Kind::Button, u"", Needs::File, &frmMain::showStepAfter},
    {u"miDrawDiff", 3500, u"差分設定(&F)...", u"基準ステップとの差分を設定します。", u"描画", u"", Kind::Button, u"", Needs::Nothing, &frmMain::editDifference},
    {u"miDrawValue", 3600, u"数値(&V)", u"節点または要素に数値を表示します。", u"描画", u"", Kind::Button, u"", Needs::Nothing, &frmMain::repaint, setting<&S::ValueDisplay>},
    {u"miDrawDispScale", 3210, u"変位スケール(&D)", u"", u"描画", u"", Kind::Popup, u"pbDrawDispScale", Needs::Displacement, nullptr},
    {u"miDispNone", 3211, u"なし(&N)", u"変位を表示しません。", u"描画", u"", Kind::Button, u"", Needs::Nothing, &frmMain::repaint},
    {u"miDispOne", 3212, u"１．０基準(&O)", u"変位１．０を基準の長さで表示します。", u"描画", u"", Kind::Button, u"", Needs::Nothing, &frmMain::repaint},
    {u"miDispMax", 3213, u"最大値基準(&M)", u"最大の変位を基準の長さで表示します。", u"描画", u"", Kind::Button, u"", Needs::Nothing, &frmMain::repaint},
    {u"miDispReal", 3214, u"実際のスケール(&R)", u"変位を実際の縮尺で表示します。", u"描画", u"", Kind::Button, u"", Needs::Nothing, &frmMain::repaint},
    {u"miDrawDispLegend", 3220, u"変位凡例(&L)", u"変位の凡例を表示します。", u"描画", u"", Kind::Button, u"", Needs::Displacement, &frmMain::repaint, setting<&S::Displacement, &DisplacementSettings::Legend>},
    {u"miDrawOrgMesh", 3230, u"変位前のメッシュ(&M)", u"変位前のメッシュを重ねて表示します。", u"描画", u"", Kind::Button, u"", Needs::Displacement, &frmMain::repaint, setting<&S::Displacement, &DisplacementSettings::Original>},
    {u"miDrawVectorItem", 3330, u"ベクトルアイテム(&R)", u"ベクトルで表示するアイテムを選びます。", u"描画", u"", Kind::Combo, u"", Needs::Nothing, &frmMain::chooseVector},
    {u"miDrawVectorScale", 3310, u"ベクトルスケール(&V)", u"", u"描画", u"", Kind::Popup, u"pbDrawVectorScale", Needs::Nothing, nullptr},
    {u"miVectorNone", 3311, u"なし(&N)", u"ベクトルを表示しません。", u"描画", u"", Kind::Button, u"", Needs::Nothing, &frmMain::repaint},
    {u"miVectorOne", 3312, u"１．０基準(&O)", u"値１．０を基準の長さで表示します。", u"描画", u"", Kind::Button, u"", Needs::Nothing, &frmMain::repaint},
    {u"miVectorMax", 3313, u"最大値基準(&M)", u"最大値を基準の長さで表示します。", u"描画", u"", Kind::Button, u"", Needs::Nothing, &frmMain::repaint},
    {u"miDrawVectorLegend", 3320, u"ベクトル凡例(&G)", u"ベクトルの凡例を表示します。", u"描画", u"", Kind::Button, u"", Needs::Nothing, &frmMain::repaint, setting<&S::Vector, &VectorSettings::Legend>},
    {u"miDrawContourItem", 3410, u"コンタアイテム(&I)", u"コンタで表示するアイテムを選びます。", u"描画", u"", Kind::Combo, u"", Needs::Nothing, &frmMain::chooseItem},
    {u"miDrawContourColor", 3420, u"コンタ配色(&C)", u"", u"描画", u"", Kind::Popup, u"pdDrawContourColor", Needs::Areas, nullptr},
    {u"miContourColor1", 3421, u"黒 -> 白(&1)", u"コンタの配色を選びます。", u"描画", u"", Kind::Button, u"", Needs::Nothing, &frmMain::repaint},
    {u"miContourColor2", 3422, u"黒 -> 赤 -> 白(&2)", u"コンタの配色を選びます。", u"描画", u"", Kind::Button, u"", Needs::Nothing, &frmMain::repaint},
    {u"miContourColor3", 3423, u"黒 -> 緑 -> 白(&3)", u"コンタの配色を選びます。", u"描画", u"", Kind::Button, u"", Needs::Nothing, &frmMain::repaint},
    {u"miContourColor4", 3424, u"黒 -> 青 -> 白(&4)", u"コンタの配色を選びます。", u"描画", u"", Kind::Button, u"", Needs::Nothing, &frmMain::repaint},
    {u"miContourColor5", 3425, u"既定値(&5)", u"コンタの配色を選びます。", u"描画", u"", Kind::Button, u"", Needs::Nothing, &frmMain::repaint},
    {u"miContourColor6", 3426, u"ユーザー定義(&6)", u"コンタの配色を選びます。", u"描画", u"", Kind::Button, u"", Needs::Nothing, &frmMain::repaint},
    {u"miDrawContourLegend", 3430, u"コンタ凡例(&E)", u"コンタの凡例を表示します。", u"描画", u"", Kind::Button, u"", Needs::Areas, &frmMain::repaint, setting<&S::Contour, &ContourSettings::Legend>},
    {u"miDrawContourValue", 3440, u"コンタ値設定(&A)...", u"コンタの範囲と分割数を設定します。", u"描画", u"", Kind::Button, u"", Needs::Areas, &frmMain::editContourValue},
    {u"miDrawSetting", 3999, u"設定(&T)...", u"変位、ベクトル、コンタの描画を設定します。", u"描画", u"", Kind::Button, u"", Needs::Nothing, &frmMain::editDrawSettings},
    {u"miDrawHeader", 3700, u"ヘッダー(&H)", u"ステップやアイテムの名前を図の左上に表示します。", u"描画", u"", Kind::Button, u"", Needs::Nothing, &frmMain::repaint, setting<&S::HeaderDisplay>},
    {u"miToolsDistribution", 7100, u"分布図(&D)...", u"選択したオブジェクトの分布図を作成します。", u"ツール", u"", Kind::Button, u"", Needs::Picked, &frmMain::createDistribution},
    {u"miToolsHistory", 7200, u"時系列図(&H)...", u"選択したオブジェクトの時系列図を作成します。", u"ツール", u"", Kind::Button, u"", Needs::Picked, &frmMain::createHistory},
    {u"miToolsImageCopy", 7300, u"イメージコピー(&C)", u"表示中の図をクリップボードにコピーします。", u"ツール", u"", Kind::Button, u"", Needs::Picture, &frmMain::copyImage},
    {u"miToolsSlideShow", 7400, u"スライドショー(&S)", u"計算ステップを順に表示します。", u"ツール", u"F6", Kind::Button, u"", Needs::ShowOff, &frmMain::toggleSlideShow},
    {u"miToolsOption", 7999, u"オプション(&O)...", u"線、フォント、数値の書式を設定します。", u"ツール", u"", Kind::Button, u"", Needs::Nothing, &frmMain::editOptions},
    {u"miAddinManager", 8100, u"アドインマネージャ(&M)...", u"アドインの追加と削除を行います。", u"アドイン", u"", Kind::Button, u"", Needs::Nothing, &frmMain::manageAddins},
    {u"miHelpIndex", 9100, u"目次(&C)", u"ヘルプの目次を開きます。", u"ヘルプ", u"F1", Kind::Button, u"", Needs::Nothing, &frmMain::showHelpIndex},
    {u"miHelpKeyword", 9200, u"キーワード(&I)...", u"ヘルプをキーワードで探します。", u"ヘルプ", u"", Kind::Button, u"", Needs::Nothing, &frmMain::showHelpKeyword},
    {u"miHelpSearch", 9300, u"検索(&S)...", u"ヘルプの本文を検索します。", u"ヘルプ", u"", Kind::Button, u"", Needs::Nothing, &frmMain::showHelpSearch},
    {u"miHelpWebTemplate", 9998, u"Webページテンプレート", u"", u"ヘルプ", u"", Kind::Button, u"", Needs::Nothing, nullptr},
    {u"miHelpVersion", 9999, u"バージョン情報(&A)...", u"プログラムのバージョンを表示します。", u"ヘルプ", u"", Kind::Button, u"", Needs::Nothing, &frmMain::showAbout},
    {u"miSlideStop", 10100, u"終了(&S)", u"スライドショーを終了します。", u"スライドショー", u"F6", Kind::Button, u"", Needs::ShowOn, &frmMain::toggleSlideShow},
    {u"miSlideExport", 10200, u"エクスポート(&E)...", u"スライドショーを動画ファイルに出力します。", u"スライドショー", u"", Kind::Button, u"", Needs::ShowHalted, &frmMain::exportSlideShow},
    {u"miSlidePause", 10300, u"停止", u"スライドショーを一時停止します。", u"スライドショー", u"", Kind::Button, u"", Needs::ShowRunning, &frmMain::pauseSlideShow},
    {u"miSlideRestart", 10400, u"再開(&R)", u"スライドショーを再開します。", u"スライドショー", u"", Kind::Button, u"", Needs::ShowHalted, &frmMain::restartSlideShow},
    {u"miSlideShowCompress", 10500, u"圧縮オプション", u"圧縮オプションダイアログを表示します。", u"スライドショー", u"", Kind::Button, u"", Needs::ShowHalted, &frmMain::pauseSlideShow},
    {u"miSlideShowProp", 10600, u"設定(&P)...", u"スライドショーを設定します。", u"スライドショー", u"", Kind::Button, u"", Needs::ShowHalted, &frmMain::editSlideShow},
};
// clang-format on

const FamilyRow commandTable::families[] = {
    {u"recent-", 100000, 0, u"pbFile", u"miFileQuit", &frmMain::openRecentFile},
    {u"addin-", 110000, 1, u"pbAddIn", u"", &frmMain::runAddin},
    {u"tool-", 120000, 0, u"pbTools", u"", &frmMain::runTool},
};

namespace {

constexpr const char16_t* pbViewScale[] = {u"miViewScaleFixed", u"miViewScaleAutomatic"};
constexpr const char16_t* pbDrawDispScale[] = {u"miDispNone", u"miDispOne", u"miDispMax", u"miDispReal"};
constexpr const char16_t* pbDrawVectorScale[] = {u"miVectorNone", u"miVectorOne", u"miVectorMax"};
constexpr const char16_t* pdDrawContourColor[] = {u"miContourColor1", u"miContourColor2", u"miContourColor3",
                                                  u"miContourColor4", u"miContourColor5", u"miContourColor6"};
constexpr const char16_t* pbFile[] = {
    u"miFileOpen",    u"miFileSaveLayout",     u"-", u"miFilePreview",  u"miFilePrint", u"miFilePrinter", u"-",
    u"miFilePicture", u"miFilePictureCommand", u"-", u"miFileProperty", u"-",           u"miFileQuit"};
constexpr const char16_t* pbView[] = {u"miViewScale",
                                      u"miViewMesh",
                                      u"-",
                                      u"miViewZoomIn",
                                      u"miViewZoomOut",
                                      u"miViewZoomOff",
                                      u"-",
                                      u"miViewToolBar",
                                      u"miViewStatusBar",
                                      u"-",
                                      u"miViewRefresh",
                                      u"-",
                                      u"miViewReload",
                                      u"miViewFollow",
                                      u"-",
                                      u"miViewFit",
                                      u"miViewFitDisplaced",
                                      u"miViewBack",
                                      u"miViewForward",
                                      u"-",
                                      u"miViewFullScreen",
                                      u"-",
                                      u"miViewPointTip",
                                      u"miViewFadeMesh"};
constexpr const char16_t* pbDraw[] = {u"miDrawStep",
                                      u"miDrawDiff",
                                      u"miDrawValue",
                                      u"-",
                                      u"miDrawDispScale",
                                      u"miDrawDispLegend",
                                      u"miDrawOrgMesh",
                                      u"-",
                                      u"miDrawVectorItem",
                                      u"miDrawVectorScale",
                                      u"miDrawVectorLegend",
                                      u"-",
                                      u"miDrawContourItem",
                                      u"miDrawContourColor",
                                      u"miDrawContourLegend",
                                      u"miDrawContourValue",
                                      u"-",
                                      u"miDrawSetting",
                                      u"-",
                                      u"miDrawStepBefore",
                                      u"miDrawStepAfter",
                                      u"miDrawHeader"};
constexpr const char16_t* pbTools[] = {
    u"miToolsDistribution", u"miToolsHistory", u"-", u"miToolsImageCopy", u"miToolsSlideShow", u"-", u"miToolsOption"};
constexpr const char16_t* pbAddIn[] = {u"miAddinManager"};
constexpr const char16_t* pbHelp[] = {u"miHelpIndex", u"miHelpKeyword", u"miHelpSearch", u"-", u"miHelpVersion"};
constexpr const char16_t* pbPopup[] = {u"miViewZoomIn",
                                       u"miViewZoomOut",
                                       u"miViewZoomOff",
                                       u"-",
                                       u"miDrawSetting=描画設定(&T)...",
                                       u"-",
                                       u"miToolsDistribution",
                                       u"miToolsHistory",
                                       u"miToolsImageCopy",
                                       u"-",
                                       u"miViewFit"};
constexpr const char16_t* mbGeneral[] = {u"miFile", u"miView", u"miDraw", u"miTools", u"miAddIn", u"miHelp"};
constexpr const char16_t* tbGeneral[] = {u"miFileOpen",
                                         u"miFilePrint",
                                         u"miFilePreview",
                                         u"miFilePrinter",
                                         u"-",
                                         u"miViewZoomIn",
                                         u"miViewZoomOut",
                                         u"miViewZoomOff",
                                         u"-",
                                         u"miDrawStep",
                                         u"miDrawVectorItem",
                                         u"miDrawContourItem",
                                         u"miDrawContourValue",
                                         u"-",
                                         u"miViewFit"};
constexpr const char16_t* tbSlideShow[] = {u"miDrawStep",  u"-", u"miSlideRestart",  u"miSlidePause",
                                           u"miSlideStop", u"-", u"miSlideShowProp", u"miSlideExport"};

constexpr BandRow bands[] = {
    {u"pbViewScale", BandKind::Popup, u"スケールモード", pbViewScale, setting<&S::Window, &WindowSettings::ScaleMode>},
    {u"pbDrawDispScale", BandKind::Popup, u"変位スケール", pbDrawDispScale,
     setting<&S::Displacement, &DisplacementSettings::Fiducial>},
    {u"pbDrawVectorScale", BandKind::Popup, u"ベクトルスケール", pbDrawVectorScale,
     setting<&S::Vector, &VectorSettings::Fiducial>},
    {u"pdDrawContourColor", BandKind::Popup, u"コンタ配色", pdDrawContourColor,
     setting<&S::Contour, &ContourSettings::ColorIndex>},
    {u"pbFile", BandKind::Popup, u"ファイル", pbFile},
    {u"pbView", BandKind::Popup, u"表示", pbView},
    {u"pbDraw", BandKind::Popup, u"描画", pbDraw},
    {u"pbTools", BandKind::Popup, u"ツール", pbTools},
    {u"pbAddIn", BandKind::Popup, u"アドイン", pbAddIn},
    {u"pbHelp", BandKind::Popup, u"ヘルプ", pbHelp},
    {u"pbPopup", BandKind::Popup, u"コンテキストメニュー", pbPopup},
    {u"mbGeneral", BandKind::MenuBar, u"メニュー", mbGeneral},
    {u"tbGeneral", BandKind::ToolBar, u"ツールバー", tbGeneral},
    {u"tbSlideShow", BandKind::ToolBar, u"スライドショー", tbSlideShow},
};

QString text(const char16_t* literal) {
    return QString::fromUtf16(literal);
}

/// The places of a band out of its words: "-" begins a group, "name=caption" has a caption of its own there.
std::vector<BandEntry> entriesOf(const BandRow& band) {
    std::vector<BandEntry> entries;
    bool beginGroup = false;
    for (const char16_t* tool : band.tools) {
        const QString word = text(tool);
        if (word == u"-") {
            beginGroup = true;
            continue;
        }
        entries.push_back({word.section(u'=', 0, 0), beginGroup, word.section(u'=', 1)});
        beginGroup = false;
    }
    return entries;
}

} // namespace

std::span<const CommandRow> commandTable::Commands() {
    return commands;
}

std::span<const BandRow> commandTable::Bands() {
    return bands;
}

std::span<const FamilyRow> commandTable::Families() {
    return families;
}

const CommandRow* commandTable::Find(const QString& name) {
    const auto row = std::ranges::find_if(commands, [&](const CommandRow& other) { return name == text(other.name); });
    return row == std::end(commands) ? nullptr : row;
}

const BandRow* commandTable::ChoiceOf(const QString& name) {
    const auto band = std::ranges::find_if(bands, [&](const BandRow& row) {
        return row.choice && std::ranges::any_of(row.tools, [&](const char16_t* tool) { return name == text(tool); });
    });
    return band == std::end(bands) ? nullptr : band;
}

const FamilyRow* commandTable::FamilyOf(const QString& name) {
    const auto row =
        std::ranges::find_if(families, [&](const FamilyRow& family) { return name.startsWith(text(family.prefix)); });
    return row == std::end(families) ? nullptr : row;
}

namespace {
/// Where a keyboard wants Shift for a key, and what other programs have.
QList<QKeySequence> otherKeysFor(QStringView key) {
    if (key == u"+")
        return {Qt::Key_Equal, Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal};
    return key == u"-" ? QList<QKeySequence>{Qt::CTRL | Qt::Key_Minus} : QList<QKeySequence>{};
}
} // namespace

void commandTable::Build(CommandBars& bars) {
    for (const CommandRow& row : commands) {
        const QString name = text(row.name);
        bars.AddTool({name, row.id, text(row.caption), text(row.description), text(row.category),
                      QKeySequence(text(row.key)), row.form, text(row.popup), otherKeysFor(row.key)});
        bars.SetEnabled(name, IsBuilt(row));
        if (const QString picture = u":/icons/"_s + name + u".svg"_s; QFile::exists(picture))
            bars.SetPicture(name, QIcon(picture));
    }
    for (const BandRow& band : bands)
        bars.AddBand(text(band.name), band.kind, text(band.caption), entriesOf(band));
}
