// Reads result files, loads steps into a ResultModel and answers for its values. Shows no message and keeps no state.
#pragma once

#include "result/ResultModel.h"
#include "result/readers/derivedItems.h"
#include "result/readers/readerTable.h"

namespace mdVelorinResultModel {

// The file.

/// True when the file's first bytes spell `magic`, without regard to case. An empty magic always passes.
bool CheckFileMagic(const QString& path, const QString& magic);

/// True for an existing file that one of the readers recognises.
bool IsResultFile(const QString& path);

/// Reads mesh, items and the directory of steps, and leaves the file open. False, with the model untouched, for a file
/// of another kind; false, with the model closed, its file name empty and the reason, if more than the format is known,
/// in its note, for one that its reader cannot open or use.
/// `progress` may be called from time to time; when it says no, the load ends as for a file that could not be opened.
/// Items that `derived` wants stand behind those of the file.
bool LoadResultFile(const QString& path, ResultModel& model, const LoadProgress& progress = {},
                    const DerivedItems& derived = {});

/// The same for a file that is being written: only the first `bytes` of it count, and steps that end behind them are
/// left out. False too when the mesh does, or when the file has become another one meanwhile.
bool LoadSettledFile(const QString& path, qint64 bytes, ResultModel& model, const LoadProgress& progress = {},
                     const DerivedItems& derived = {});

/// The same for a file that has only grown, without reading its mesh again; `before` is the file as it was, and its
/// whole steps stay what they are. False too where the format can't do that.
bool ExtendSettledFile(const ResultModel& before, qint64 bytes, ResultModel& model, const LoadProgress& progress = {});

/// How many steps there are, from the first on, that the file held wholly when it was opened.
std::int32_t WholeSteps(const ResultModel& model);

/// Whether what was read of a step is what the file held when it was opened: it has not changed since, or it has only
/// grown and the step was whole already.
bool StillHolds(const ResultModel& model, std::int32_t step);

/// The item of `after` with the name, and if possible the kind, of an item of `before`; -1 when there is none.
std::int32_t ItemLike(const ResultModel& before, std::int32_t item, const ResultModel& after);

/// Where to go on in a file that has been read anew.
struct StepAndItem {
    std::int32_t Step = -1, Item = -1;
};
/// The step of the same number as in `before`, or the last one when there are fewer, and the item of the same name, or
/// the first one. With `toTheEnd` the last step when the last one was shown.
StepAndItem SamePlace(const ResultModel& before, const ResultModel& after, bool toTheEnd);

void CloseResultFile(ResultModel& model);
bool IsFileClosed(const ResultModel& model);

// Steps.

/// Loads `step` with `item` spread onto the nodes, and before it `referenceStep` (-1: none) as the reference. False
/// when no file is open or there is no such step; `CurrentStep` is then -1. `keepNeighbours` leaves the neighbours as
/// they are. False too when `progress`, which may be called from any thread, says no; the model is then half loaded.
bool LoadStep(std::int32_t step, std::int32_t item, ResultModel& model, bool keepNeighbours, std::int32_t referenceStep,
              const LoadProgress& progress = {});

/// Reads a step's element types and item values. `item` is only tested for being 0 or more.
bool ReadStepData(std::int32_t step, std::int32_t item, ResultModel& model, const LoadProgress& progress = {});

/// Spreads an item of the loaded step onto the nodes: per node as it is, per element as the mean over the node's
/// elements that exist in the step. An item that is not there gives zeros and `CurrentItem` -1.
void ApplyItemToNodes(std::int32_t item, ResultModel& model);

/// No reference: zeros of node length for every item.
void ClearReference(ResultModel& model);
/// Makes the loaded step the reference.
void KeepReference(ResultModel& model);

/// For each edge of each element the element on its other side, from the element types of the loaded step. Only
/// elements that exist take part. An edge of more than two elements joins each further element with the first, and the
/// first with the last. The first edge of the first existing element has no neighbour by definition. Nothing is done
/// when the same elements exist as at the last call. False, with some neighbours, when `progress` says no.
bool BuildElementNeighbours(MeshData& mesh, const LoadProgress& progress = {});

// Queries: all return a fresh record and change nothing.

/// An item in its own form, per node or packed per element; with `difference` less the reference step.
ItemValues GetItemValues(std::int32_t item, const ResultModel& model, bool difference);

/// The current item on the nodes. With `difference` nodes that are not active stay 0 and out of the bounds, which are
/// not corrected when no node is active.
ItemValues GetNodeValues(bool difference, const MeshData& mesh);

/// The displacement of every node; zeros when there is no such item.
ItemValues GetDisplacementX(const ResultModel& model, bool difference);
ItemValues GetDisplacementY(const ResultModel& model, bool difference);

/// Packed values of the elements of `elementType`, one entry per element and 0 for all others, bounds as given; values
/// per node (`elementType` negative) come back as they are.
ItemValues ExpandItemValues(std::int32_t elementType, const MeshData& mesh, const ItemValues& values);

/// `a` less `b`, as long as the shorter of the two.
ItemValues SubtractValues(const ItemValues& a, const ItemValues& b);

/// Packed element values as the mean over all elements of a node, those that do not exist in the step included (as 0).
ItemValues AverageToNodes(const ItemValues& values, const MeshData& mesh, std::int32_t elementType);

} // namespace mdVelorinResultModel
