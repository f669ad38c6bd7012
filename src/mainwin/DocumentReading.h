// Reads the result file of a session while its window stays alive: opens it, loads steps, finds ranges, reads it anew.
// What has been read becomes the session's on the window's own thread, since the window may paint meanwhile. Which file
// it is, and what shows of it, is its owner's business.
#pragma once

#include "result/ShowRange.h"
#include "view/scene/Session.h"

#include <QObject>

class DocumentReading : public QObject {
    Q_OBJECT

public:
    enum class Outcome { Done, Stopped, Refused, NoMemory };

    /// The session must outlive it.
    explicit DocumentReading(Session& ofSession) : session(ofSession) {}

    /// A file on its way into the window, with the step that it opens with.
    struct Opening {
        ResultModel Loaded;
        int Step = -1, Item = -1, Reference = -1; ///< as its property file wants them
    };
    /// Reads a file into a model of its own, so that one that can't be had leaves the session as it was; its note may
    /// say why.
    Outcome Open(const QString& path, Opening& opening);

    /// The open file as far as its first bytes go, with the step that is to show.
    struct Anew {
        ResultModel Loaded;
        bool Grown = false; ///< its first steps are the whole steps of the open one
    };
    /// With `following` it is read on from where it ended, if it has only grown, goes to the last step if the last one
    /// shows, and gives way to input, since nobody asked for it.
    Outcome ReadAnew(qint64 bytes, bool following, Anew& anew);

    /// False, with the step that shows, when another one could not be had; the user is told why.
    bool LoadStep(std::int32_t step, std::int32_t item);
    /// Finds the range of all steps if the contour has it and it is not known for the item. When that is stopped, or
    /// there is no memory for it, the contour gets the range of the step.
    void FindRange();
    /// What a slide show holds fixed; nothing when that was stopped.
    std::optional<ShowRange> RangeForShow();

    static QString FileHasChanged();

signals:
    /// What comes takes long: the window is to be there.
    void WindowWanted();
    /// How it gets on; empty at its end.
    void Progress(const QString& text);
    void Told(const QString& line);

private:
    using Read = std::function<void(const LoadProgress&)>;
    bool readWith(qint64 bytes, const QString& caption, const Read& read, bool givesWay = false);
    bool runRange(const Read& find);

    Session& session;
};
