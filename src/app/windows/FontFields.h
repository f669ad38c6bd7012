// The controls for size and styles of a font, with a sample, for dialogs that edit font strings. Which font is meant,
// and the box for its face, is the dialog's business.
#pragma once

#include <QString>
#include <array>
#include <functional>

class PictureBox;
class QCheckBox;
class QComboBox;
class QObject;
struct FontObject;

/// The controls belong to the form that they are put into.
class FontFields {
public:
    /// Makes the controls, under the names `cmbFontSize`, `chkFont` and `picFont`.
    FontFields();

    void Show(const FontObject& font) const;
    /// The font string with the face and what the controls show; its colour stays.
    QString Edited(const QString& fontString, const QString& face) const;
    void DrawSample(const QString& fontString) const;
    /// Calls when the user has changed one of them.
    void OnChange(QObject* receiver, const std::function<void()>& changed) const;

    QComboBox* Size;
    std::array<QCheckBox*, 4> Styles; ///< bold, italic, underline, struck out
    PictureBox* Sample;
};
