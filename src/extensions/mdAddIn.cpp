#include "extensions/mdAddIn.h"

#include "platform/base/Literals.h"
#include "platform/base/MessageStyle.h"
#include "platform/base/NativePath.h"

#include <QScopeGuard>
#include <QStandardPaths>
#include <unistd.h>

namespace {

QString namesOf(const std::vector<AddinModule>& modules) {
    QStringList lines;
    for (const AddinModule& module : modules)
        lines += module.Name;
    return lines.join(u"\r\n"_s);
}

QString offerOf(const std::vector<AddinModule>& found) {
    QStringList lines{QString::number(found.size()) + u" 個のアドインモジュールが見つかりました。"_s,
                      u"インストールしますか。"_s, QString()};
    for (const AddinModule& module : found)
        lines += module.Name + u'[' + (module.Vendor.isEmpty() ? u"提供元不明"_s : module.Vendor) + u']';
    return lines.join(u"\r\n"_s);
}

} // namespace

QStringList mdAddIn::AddinFolders(const QString& programFolder) {
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    QString own = programFolder + u"/addin"_s;
    std::error_code none;
    if (programFolder.endsWith(u"/bin"_s) && !std::filesystem::is_directory(NativePath::Of(own), none))
        own = programFolder.chopped(3) + u"lib/velorin/addin"_s;
    return {own, data + u"/Velorin/addin"_s};
}

std::vector<AddinModule> mdAddIn::Candidates(const AddinHost& host, const QStringList& folders, bool all) {
    std::vector<AddinModule> found;
    for (const QString& folder : folders)
        for (const AddinModule& module : host.Search(folder, all))
            found.push_back(module);
    return found;
}

void mdAddIn::AutoInstallAddins(AddinHost& host, const QStringList& folders, const Ask& ask) {
    const std::vector<AddinModule> found = Candidates(host, folders, false);
    if (found.empty() || ask(offerOf(found), MessageStyle::Ask) != MessageAnswer::Yes)
        return;
    std::vector<AddinModule> failed;
    for (const AddinModule& module : found)
        if (!host.Install(module))
            failed.push_back(module);
    if (failed.empty())
        ask(u"インストールが完了しました。"_s, MessageStyle::Information);
    else if (failed.size() < found.size())
        ask(QString::number(found.size() - failed.size()) + u" 個のモジュールをインストールしました。\r\n"_s +
                u"以下のモジュールはインストールすることができません。\r\n"_s + namesOf(failed),
            MessageStyle::Information);
    else
        ask(u"インストールを実行することができません。\r\n"_s + namesOf(failed), MessageStyle::Stop);
}

QString mdAddIn::RunAddin(AddinHost& host, int number, const ResultModel& model, const clsMouse& selection,
                          const std::function<void(const QString&, const std::function<void()>&)>& work) {
    std::vector<std::int32_t> selected;
    for (std::int32_t i = 0; i < selection.Count(); ++i)
        selected.push_back(selection.Item(i));
    host.Lock();
    const auto unlock = qScopeGuard([&] { host.Unlock(); });
    const std::vector<AddinModule> installed = host.ModuleList();
    if (number < 1 || number > int(installed.size()))
        return {};
    const AddinModule& module = installed[std::size_t(number - 1)];

    const std::string fileName = NativePath::Of(model.FileName).native();
    velorin_addin_call call{};
    call.file_name = fileName.c_str();
    call.file_handle = model.FileHandle.Duplicate();
    const auto close = qScopeGuard([&] {
        if (call.file_handle >= 0)
            ::close(call.file_handle);
    });
    call.current_step = model.CurrentStep;
    call.current_item = model.CurrentItem;
    call.selected_count = selection.Count();
    call.selected = selected.data();
    call.selected_kind = selection.ObjectType();
    work(module.Name, [&] { host.Run(module, call); });
    const AddinHost::Error& error = host.LastError();
    if (error.Text.isEmpty())
        return {};
    return u"モジュール : "_s + error.Module + u"\r\n内容 : "_s + error.Text +
           u"\r\n\r\n実行中にエラーが発生しました。"_s;
}
