// A page to add, change, order and remove the external programs of the ツール menu. Works on its own copy and keeps
// nothing.
#pragma once

#include "extensions/toolTable.h"
#include "platform/widgets/FormBinding.h"

#include <QWidget>
#include <array>

class QListWidget;
class QPushButton;

class ctlToolTable : public QWidget {
    Q_OBJECT

public:
    explicit ctlToolTable(QWidget* parent = nullptr);

    const std::vector<ToolEntry>& Tools() const { return tools; }
    void SetTools(const std::vector<ToolEntry>& entries);

    /// The fields of one entry.
    const FormSupport::Rows<ToolEntry>& Bindings() const { return rows; }

private:
    QWidget* buildList();
    QWidget* buildFields();
    void chooseProgram();
    void takeFields();
    void showEntry();
    void showLine(int index);
    void add();
    void remove();
    void move(int by);
    int current() const;

    std::vector<ToolEntry> tools;
    FormSupport::Rows<ToolEntry> rows;
    bool Updating = false; ///< true while the page fills its own controls
    QListWidget* lstTool = nullptr;
    std::array<QPushButton*, 4> cmdTool{}; ///< add, remove, up, down
    QWidget* fields = nullptr;
    std::array<QLineEdit*, 5> txtTool{}; ///< name, description, program, arguments, number of the picture
    QPushButton* cmdProgram = nullptr;
};
