#include "output/windows/frmFilmCodec.h"

#include "app/mdTips.h"
#include "platform/base/Rounding.h"
#include "platform/widgets/FormSupport.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTimer>

using FormSupport::Named;

namespace {
constexpr int perCent = filmFormat::MaxQuality / 100;
constexpr int mostKeyFrames = 1000, mostDataRate = 100000;
constexpr int estimateAfterMs = 150;

/// Where a film can be seen.
constexpr struct {
    const char16_t* Codec;
    const char* Note;
} notes[] = {
    {u"mpeg4", QT_TRANSLATE_NOOP("frmFilmCodec", "ほとんどのプレーヤーで再生できます。")},
    {u"raw", QT_TRANSLATE_NOOP("frmFilmCodec", "どこでも再生できますが、非常に大きくなります。画素はそのままです。")},
    {u"mjpeg", QT_TRANSLATE_NOOP("frmFilmCodec", "ほとんどのプレーヤーで再生できます。細い線も色がにじみません。")},
    {u"utvideo", QT_TRANSLATE_NOOP("frmFilmCodec", "編集用です。対応プレーヤーが必要です。画素はそのままです。")},
    {u"ffv1", QT_TRANSLATE_NOOP("frmFilmCodec", "保存用です。対応プレーヤーが必要です。画素はそのままです。")},
    {u"h264", QT_TRANSLATE_NOOP("frmFilmCodec",
                                "ほとんどのプレーヤーで再生できます。幅か高さが奇数のときは 4:4:4 になります。")},
};

FormSupport::Edit<int> countEdit(QLineEdit* box, int most) {
    return {box, [](int count) { return QString::number(count); },
            [](const QString& text) { return Round(mdTips::Val(text)); }, 0, most};
}

/// A number with its unit behind the box.
QHBoxLayout* withUnit(QLineEdit* box, const QString& unit) {
    auto* row = new QHBoxLayout;
    row->addWidget(box);
    row->addWidget(new QLabel(unit), 1);
    return row;
}
} // namespace

frmFilmCodec::frmFilmCodec(QWidget* parent, const FilmFormat& filmFormat, AviCompressor& target, const QImage& picture)
    : QDialog(parent), format(filmFormat), choice(target), sample(picture.convertToFormat(QImage::Format_RGB32)),
      cmbCodec(Named(new QComboBox, u"cmbCodec"_s)), sldQuality(Named(new QSlider(Qt::Horizontal), u"sldQuality"_s)),
      lblQuality(Named(new QLabel, u"lblQuality"_s)), txtKeyFrames(Named(new QLineEdit, u"txtKeyFrames"_s)),
      txtDataRate(Named(new QLineEdit, u"txtDataRate"_s)), lblNote(Named(new QLabel, u"lblNote"_s)),
      lblFormat(Named(new QLabel, u"lblFormat"_s)), lblSize(Named(new QLabel, u"lblSize"_s)),
      timSize(Named(new QTimer(this), u"timSize"_s)) {
    setObjectName(u"frmFilmCodec"_s);
    setWindowTitle(tr("ビデオ圧縮オプション"));
    format.Container = FilmContainer::Avi;
    for (const FilmCodec* offered : filmFormat::CodecsFor(format.Container))
        if (FilmFile::Offers(*offered)) {
            codecs.push_back(offered);
            cmbCodec->addItem(QString::fromUtf16(offered->Caption));
        }
    buildControls();
    bindControls();
    rows.Fill(choice);
    FormSupport::PlaceOnScreen(*this);
}

void frmFilmCodec::buildControls() {
    sldQuality->setRange(0, 100);
    sldQuality->setPageStep(10);
    lblQuality->setMinimumWidth(fontMetrics().horizontalAdvance(u"100 %"_s));
    lblNote->setWordWrap(true);
    lblNote->setMinimumHeight(2 * fontMetrics().lineSpacing());
    auto* grid = new QGridLayout(this);
    grid->setColumnStretch(1, 1);
    FormSupport::AddRow(*grid, 0, tr("圧縮プログラム(&C):"), cmbCodec);
    FormSupport::AddRow(*grid, 1, tr("圧縮の品質(&Q):"), sldQuality);
    grid->addWidget(lblQuality, 1, 2);
    const auto addCount = [&](int row, const QString& caption, QLineEdit* box, const QString& unit) {
        FormSupport::AddRow(*grid, row, caption, box);
        box->setMaximumWidth(10 * fontMetrics().averageCharWidth());
        FormSupport::ReformatOnLeaving(
            *box, [](const QString& text) { return QString::number(std::max(Round(mdTips::Val(text)), 0)); });
        grid->addLayout(withUnit(box, unit), row, 1, 1, 2);
    };
    addCount(2, tr("キーフレーム間隔(&K):"), txtKeyFrames, tr("フレーム (0: すべて)"));
    addCount(3, tr("データレート(&D):"), txtDataRate, tr("KB/秒 (0: 品質に従う)"));
    grid->addWidget(lblNote, 4, 0, 1, 3);
    grid->addWidget(lblFormat, 5, 0, 1, 3);
    grid->addWidget(lblSize, 6, 0, 1, 3);
    auto* ok = Named(new QPushButton(tr("OK")), u"Command1"_s, 0);
    auto* cancel = Named(new QPushButton(tr("キャンセル")), u"Command1"_s, 1);
    FormSupport::ButtonWidths({ok, cancel});
    ok->setDefault(true);
    ok->setEnabled(!codecs.empty());
    grid->addLayout(FormSupport::ButtonRow({}, {ok, cancel}), 7, 0, 1, 3);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    FormSupport::TabOrder({cmbCodec, sldQuality, txtKeyFrames, txtDataRate, ok, cancel});
    connect(ok, &QPushButton::clicked, this, &frmFilmCodec::apply);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmFilmCodec::bindControls() {
    timSize->setSingleShot(true);
    timSize->setInterval(estimateAfterMs);
    connect(timSize, &QTimer::timeout, this, &frmFilmCodec::showSize);
    connect(cmbCodec, &QComboBox::currentIndexChanged, this, &frmFilmCodec::showCodec);
    connect(sldQuality, &QSlider::valueChanged, this, [this] {
        usualQuality = false;
        showQuality();
    });
    for (QLineEdit* box : {txtKeyFrames, txtDataRate})
        connect(box, &QLineEdit::textChanged, this, &frmFilmCodec::showQuality);
    const auto fillCodec = [this](const AviCompressor& record) {
        const auto found = std::ranges::find(codecs, record.fccHandler, &FilmCodec::HandlerCode);
        cmbCodec->setCurrentIndex(found == codecs.end() ? 0 : int(found - codecs.begin()));
        showCodec();
    };
    const auto fillQuality = [this](const AviCompressor& record) {
        const bool usual = record.lQ < 0;
        sldQuality->setValue(usual ? codec().UsualQuality : record.lQ / perCent);
        usualQuality = usual;
    };
    // Nobody loses the rest of a finer number by looking at it.
    const auto readQuality = [this](AviCompressor& record) {
        if (usualQuality)
            record.lQ = -1;
        else if (record.lQ / perCent != sldQuality->value() || record.lQ < 0)
            record.lQ = sldQuality->value() * perCent;
    };
    rows = {{fillCodec, [this](AviCompressor& record) { record.fccHandler = codec().HandlerCode(); }},
            {fillQuality, readQuality},
            FormSupport::Bind(countEdit(txtKeyFrames, mostKeyFrames), &AviCompressor::lKey),
            FormSupport::Bind(countEdit(txtDataRate, mostDataRate), &AviCompressor::lDataRate)};
}

const FilmCodec& frmFilmCodec::codec() const {
    const auto index = std::size_t(std::max(cmbCodec->currentIndex(), 0));
    return index < codecs.size() ? *codecs[index] : *filmFormat::CodecsFor(FilmContainer::Avi).front();
}

void frmFilmCodec::showCodec() {
    if (usualQuality) {
        sldQuality->setValue(codec().UsualQuality);
        usualQuality = true;
    }
    for (const auto& row : notes)
        if (QStringView(row.Codec) == QStringView(codec().Name))
            lblNote->setText(tr(row.Note));
    showQuality();
}

void frmFilmCodec::showQuality() {
    const bool lossless = codec().IsLossless();
    const bool byRate = mdTips::Val(txtDataRate->text()) > 0;
    sldQuality->setEnabled(!lossless && !byRate);
    txtDataRate->setEnabled(!lossless);
    lblQuality->setText(lossless ? tr("可逆") : QString::number(sldQuality->value()) + u" %"_s);
    const FilmFormat film = chosenFormat();
    const FilmRate rate = filmFormat::RateOf(film);
    lblFormat->setText(tr("フレーム: %1 x %2、24 ビット、%3 フレーム/秒")
                           .arg(filmFormat::WidthOf(film))
                           .arg(filmFormat::HeightOf(film))
                           .arg(double(rate.Rate) / rate.Scale));
    timSize->start();
}

FilmFormat frmFilmCodec::chosenFormat() const {
    AviCompressor chosen = choice;
    rows.Read(chosen);
    FilmFormat film = chosen.FormatFor(FilmContainer::Avi);
    film.Width = format.Width;
    film.Height = format.Height;
    film.Interval = format.Interval;
    return film;
}

void frmFilmCodec::showSize() {
    constexpr double bytesPerMegabyte = 1e6;
    FilmFormat film = chosenFormat();
    const double share = double(film.Width) * film.Height / (double(sample.width()) * sample.height());
    film.Width = sample.width();
    film.Height = sample.height();
    const double bytes = sample.isNull() ? 0 : FilmFile::BytesPerMinute(film, filmFrames::FrameOf(sample)) * share;
    lblSize->setText(bytes > 0 ? tr("1 分あたり 約 %1 MB").arg(bytes / bytesPerMegabyte, 0, 'f', 1)
                               : tr("1 分あたりの大きさは不明です。"));
}

void frmFilmCodec::apply() {
    rows.Read(choice);
    Result = true;
    accept();
}
