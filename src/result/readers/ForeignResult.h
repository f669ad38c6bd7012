// What a reader finds in the file of another solver: points and cells in space, arrays with components, steps. Here it
// becomes a result: a plane mesh, and an item per component. Knows no format.
#pragma once

#include "result/readers/CellTable.h"
#include "result/readers/IdIndex.h"
#include "result/readers/ResultContent.h"
#include "result/readers/numberTypes.h"

#include <functional>

struct ForeignArray {
    QString Name;
    std::int32_t Components = 1;
    QStringList ComponentNames; ///< empty: those that so many components usually have
    bool OnCells = false;       ///< else on the points
};

/// All values of an array in a step, component by component within point by point or cell by cell; fewer when the file
/// is cut short. Called from several threads at once.
using ReadArray = std::function<std::vector<float>(std::int32_t step, std::int32_t array)>;

/// A component out of the record of a point or cell, which is cut short where the file is. False when the record is not
/// that of `place`.
using ReadRecord =
    std::function<bool(std::span<const char> record, std::int32_t place, std::int32_t component, float& value)>;
/// Of records that are numbers of a type, behind the point's or cell's own number in 32 bits where there are `ids`.
ReadRecord BinaryRecord(NumberType type, bool bigEndian, const IdIndex* ids = nullptr);

/// Where the values of an array stand in a step so that single ones can be read: a record for each point or cell.
struct DirectArray {
    ReadHandle File;
    qint64 Offset = 0; ///< of the first record
    qint64 Stride = 0; ///< bytes of a record
    qint64 Count = 0;  ///< of points or cells
    ReadRecord Value;
};
/// Nothing for what has to be read whole. Called from several threads at once.
using FindArray = std::function<std::optional<DirectArray>(std::int32_t step, std::int32_t array)>;

struct ForeignStep {
    double Time = 0;
    std::vector<std::int32_t> Arrays; ///< those that it has, ascending
    qint64 End = 0;                   ///< as `StepSource::EndOf` has it
};

struct ForeignResult {
    QString Magic; ///< the format, for the eye
    std::int32_t Version = 0;
    QString Title;
    std::vector<double> Points; ///< x, y, z of each
    CellTable Cells;
    std::vector<ForeignArray> Arrays;
    std::vector<ForeignStep> Steps;
    ReadArray Read;
    FindArray Find;      ///< perhaps none
    QStringList LeftOut; ///< what the reader itself has left out, a few words each
    bool IsCut = false;  ///< the file ends within something
};

/// What `LeftOut` says of a file that ends too early.
inline constexpr QStringView CutData = u"途中から後のデータ";

/// What to say of a file that a reader can't use: its problem, or that it ends too early, or nothing.
QString WhyRefused(const QString& problem, bool isCut);

/// The result in `content`, with a line in `content.Note` when anything was left out. False, with the reason in
/// `content.Note`, for what is no plane mesh with values.
bool BuildContent(ForeignResult&& result, ResultContent& content);

/// What so many components are called after their array; a single one has no name.
QStringList UsualComponentNames(std::int32_t components);
