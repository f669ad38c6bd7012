#include "platform/widgets/FileDialog.h"

#include "platform/base/Literals.h"
#include "platform/base/NativePath.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTreeView>

namespace {
/// Pairs of description and patterns as Qt's list of name filters. "*.*" means every file, also one without a dot.
QStringList nameFiltersOf(const QString& filter) {
    const QStringList parts = filter.split(u'|');
    QStringList result;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString description = parts[i];
        if (const qsizetype bracket = description.lastIndexOf(u'('); bracket > 0)
            description.truncate(bracket);
        QStringList patterns = parts[i + 1].split(u';', Qt::SkipEmptyParts);
        for (QString& pattern : patterns)
            pattern = pattern.trimmed() == u"*.*" ? u"*"_s : pattern.trimmed();
        result += description.trimmed() + u" ("_s + patterns.join(u' ') + u')';
    }
    return result;
}

QStringList patternsOf(const QString& nameFilter) {
    return nameFilter.section(u'(', -1).section(u')', 0, 0).split(u' ', Qt::SkipEmptyParts);
}

/// Suffix of a name filter's first pattern, empty when that pattern leaves it open.
QString suffixOf(const QString& nameFilter) {
    const QString first = patternsOf(nameFilter).value(0);
    const QString suffix = first.startsWith(u"*.") ? first.mid(2) : QString();
    return suffix.contains(u'*') || suffix.contains(u'?') ? QString() : suffix;
}
} // namespace

FileDialog::FileDialog(QWidget* parent, const QString& title, const QString& filter, bool save)
    : QFileDialog(parent, title) {
    setObjectName(u"fileDialog"_s);
    setAcceptMode(save ? AcceptSave : AcceptOpen);
    setFileMode(save ? AnyFile : ExistingFile);
    const QStringList filters = nameFiltersOf(filter);
    if (!filters.isEmpty())
        setNameFilters(filters);
    if (save) {
        setDefaultSuffix(suffixOf(filters.value(0)));
        connect(this, &QFileDialog::filterSelected, this,
                [this](const QString& selected) { setDefaultSuffix(suffixOf(selected)); });
    } else {
        buildOtherNames();
    }
    if (auto* files = findChild<QFileSystemModel*>())
        connect(files, &QFileSystemModel::directoryLoaded, this, &FileDialog::fitColumns);
}

/// The toolkit gives sizes and dates too little room to be read. What they leave belongs to the names.
void FileDialog::fitColumns() {
    auto* list = findChild<QTreeView*>(u"treeView"_s);
    if (!list)
        return;
    const QHeaderView& header = *list->header();
    for (int column = 0; column < header.count(); ++column)
        list->resizeColumnToContents(column);
    list->setColumnWidth(0, list->columnWidth(0) + std::max(0, list->viewport()->width() - header.length()));
}

void FileDialog::buildOtherNames() {
    auto* grid = qobject_cast<QGridLayout*>(layout());
    if (!grid)
        return;
    constexpr int linesShown = 4;
    otherNames = new QListWidget(this);
    otherNames->setObjectName(u"otherNames"_s);
    otherNames->setAccessibleName(tr("名前が UTF-8 でないファイル"));
    otherNames->setToolTip(otherNames->accessibleName());
    otherNames->setMaximumHeight(linesShown * otherNames->fontMetrics().lineSpacing() + 2 * otherNames->frameWidth());
    grid->addWidget(otherNames, grid->rowCount(), 0, 1, grid->columnCount());
    connect(otherNames, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) {
        takeOtherName(*item);
        accept();
    });
    connect(otherNames, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) { takeOtherName(*item); });
    connect(this, &QFileDialog::directoryEntered, this, [this](const QString& entered) {
        folder = entered;
        listOtherNames();
    });
    connect(this, &QFileDialog::filterSelected, this, &FileDialog::listOtherNames);
}

/// Of a folder whose own name is not UTF-8 these are all the files.
void FileDialog::listOtherNames() {
    otherNames->clear();
    for (const QString& name : NativePath::Files(folder, patternsOf(selectedNameFilter()))) {
        const QString path = folder + u'/' + name;
        if (NativePath::Shown(path) == path)
            continue;
        auto* item = new QListWidgetItem(NativePath::Shown(name), otherNames);
        item->setData(Qt::UserRole, path);
    }
    otherNames->setVisible(otherNames->count() > 0);
}

void FileDialog::takeOtherName(const QListWidgetItem& item) {
    findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(item.text());
    if (const auto* buttons = findChild<QDialogButtonBox*>())
        buttons->button(QDialogButtonBox::Open)->setEnabled(true);
}

void FileDialog::StartAt(const QString& start) {
    std::error_code none;
    const QString path = NativePath::Absolute(start);
    const qsizetype slash = path.lastIndexOf(u'/');
    const bool isFolder = std::filesystem::is_directory(NativePath::Of(path), none);
    folder = isFolder ? path : path.left(std::max<qsizetype>(slash, 1));
    setDirectory(folder);
    if (!isFolder)
        selectFile(NativePath::Shown(path.mid(slash + 1)));
    if (!isFolder && acceptMode() == AcceptOpen)
        selectFilterOf(path.mid(slash + 1));
    if (otherNames)
        listOtherNames();
}

/// The next file is most likely of the same kind.
void FileDialog::selectFilterOf(const QString& name) {
    for (const QString& filter : nameFilters()) {
        if (QDir::match(patternsOf(filter), name)) {
            selectNameFilter(filter);
            return;
        }
    }
}

QCheckBox* FileDialog::AddSwitch(const QString& caption, bool on) {
    auto* grid = qobject_cast<QGridLayout*>(layout());
    if (!grid)
        return nullptr;
    auto* box = new QCheckBox(caption, this);
    box->setObjectName(u"fileSwitch"_s);
    box->setChecked(on);
    grid->addWidget(box, grid->rowCount(), 0, 1, grid->columnCount());
    return box;
}

QString FileDialog::Chosen() const {
    if (!chosen.isEmpty())
        return chosen;
    const QUrl url = selectedUrls().value(0);
    return url.isLocalFile() ? NativePath::OfUrl(url) : selectedFiles().value(0);
}

void FileDialog::accept() {
    const auto* line = findChild<QLineEdit*>(u"fileNameEdit"_s);
    const QListWidgetItem* item = otherNames ? otherNames->currentItem() : nullptr;
    if (!item || !line || line->text() != item->text()) {
        QFileDialog::accept();
        return;
    }
    chosen = item->data(Qt::UserRole).toString();
    QDialog::accept();
}
