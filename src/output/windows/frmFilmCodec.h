// The dialog that chooses how an AVI film is compressed, among what can be had here. It writes no film; what its choice
// takes is estimated by compressing one picture. frmFilmCodec form(this, format, choice, picture); form.exec();
#pragma once

#include "output/clsAviWriter.h"
#include "platform/widgets/FormBinding.h"

#include <QDialog>

class QLabel;
class QSlider;
class QTimer;

class frmFilmCodec : public QDialog {
    Q_OBJECT

public:
    /// `choice` must outlive the dialog and is written by OK alone. `format` has the film's size and rate, and `sample`
    /// is about what its frames look like; a null one leaves the size unsaid.
    frmFilmCodec(QWidget* parent, const FilmFormat& format, AviCompressor& choice, const QImage& sample = {});

    const FormSupport::Rows<AviCompressor>& Bindings() const { return rows; }

    /// True after OK.
    bool Result = false;

private:
    void buildControls();
    void bindControls();
    const FilmCodec& codec() const;
    FilmFormat chosenFormat() const;
    void showCodec();
    void showQuality();
    void showSize();
    void apply();

    FilmFormat format;
    AviCompressor& choice;
    QImage sample;
    std::vector<const FilmCodec*> codecs;
    FormSupport::Rows<AviCompressor> rows;

    QComboBox* cmbCodec;
    QSlider* sldQuality; ///< per cent
    QLabel* lblQuality;
    QLineEdit* txtKeyFrames;
    QLineEdit* txtDataRate;
    QLabel* lblNote;
    QLabel* lblFormat;
    QLabel* lblSize;
    QTimer* timSize; ///< the estimate waits for the end of a drag
    bool usualQuality = true;
};
