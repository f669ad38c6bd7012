#include "result/readers/TextStretches.h"

#include "platform/base/Parallel.h"

namespace {

constexpr qint64 fewestBytes = 1 << 12;
constexpr qint64 longestPiece = 1 << 16;
constexpr qint64 bytesAhead = 256; ///< in which a piece mostly ends

} // namespace

std::size_t NextWords(std::string_view text, std::size_t from) {
    for (; from <= text.size(); ++from)
        if (IsBlank(text[from - 1]))
            return from;
    return text.npos;
}

std::size_t NextLine(std::string_view text, std::size_t from) {
    for (; from < text.size(); ++from)
        if (text[from - 1] == '\n' || (text[from - 1] == '\r' && text[from] != '\n'))
            return from;
    return text.npos;
}

std::size_t Anywhere(std::string_view, std::size_t from) {
    return from;
}

std::size_t TextStretches::Slots() {
    return std::size_t(coreCount()) * 4;
}

TextStretches::TextStretches(FileScanner& scanner, CutRule rule, ParseStretch work)
    : in(scanner), cut(rule), parse(std::move(work)), stretches(Slots()), plannedEnd(in.Position()), limit(plannedEnd) {
    ownBuffer.swap(in.SpareBuffer());
}

TextStretches::~TextStretches() {
    {
        const std::lock_guard guard(lock);
        limit = plannedEnd;
        isOver = true;
    }
    changed.notify_all();
    helpers.clear();
    ownBuffer.swap(in.SpareBuffer());
}

/// The pieces that begin in it, and where they stand.
std::string_view TextStretches::textOf(Stretch& stretch, std::vector<char>& buffer, bool isFirst) const {
    // With the byte before, by which the beginning is found.
    const qint64 start = isFirst ? stretch.From : stretch.From - 1;
    qint64 filled = 0;
    std::size_t end = std::string_view::npos;
    for (const qint64 ahead : {bytesAhead, longestPiece}) {
        const qint64 wanted = std::min(stretch.To + ahead, in.End()) - start;
        buffer.resize(std::size_t(std::max<qint64>(wanted, std::ssize(buffer))));
        filled += in.File().ReadAt(start + filled, buffer.data() + filled, wanted - filled);
        const std::string_view text(buffer.data(), std::size_t(filled));
        end = stretch.To - start <= filled ? cut(text, std::size_t(stretch.To - start)) : text.npos;
        if (end != text.npos || start + filled >= in.End() || filled < wanted)
            break;
    }
    std::string_view text(buffer.data(), std::size_t(filled));
    if (end == text.npos && start + filled < in.End()) {
        stretch.Start = stretch.End = stretch.From;
        return {};
    }
    text = text.substr(0, end);
    const std::size_t begin = isFirst ? 0 : std::min(cut(text, 1), text.size());
    stretch.Start = start + qint64(begin);
    stretch.End = start + qint64(text.size());
    return text.substr(begin);
}

void TextStretches::workOnOne(std::unique_lock<std::mutex>& guard, std::vector<char>& buffer) {
    const std::int64_t index = planned++;
    Stretch& stretch = stretchAt(index);
    stretch = Stretch();
    stretch.From = plannedEnd;
    stretch.To = std::min(plannedEnd + StretchBytes, limit);
    plannedEnd = stretch.To;
    guard.unlock();
    try {
        parse(std::size_t(index) % stretches.size(), textOf(stretch, buffer, index == 0));
    } catch (...) {
        stretch.Failure = std::current_exception();
    }
    guard.lock();
    stretch.IsReady = true;
    changed.notify_all();
}

void TextStretches::startHelpers() {
    const auto help = [this] {
        tidyVectorRegisters();
        std::vector<char> buffer;
        std::unique_lock guard(lock);
        while (!isOver) {
            if (canBegin())
                workOnOne(guard, buffer);
            else
                changed.wait(guard);
        }
    };
    try {
        // As many as there is work for.
        const qint64 wanted = std::min<qint64>(coreCount() - 1, (limit - plannedEnd) / StretchBytes);
        while (std::ssize(helpers) < wanted)
            helpers.emplace_back(help);
    } catch (const std::system_error&) {
        // With fewer threads it takes longer.
    }
}

std::optional<std::size_t> TextStretches::Next(qint64 wanted) {
    if (!in.GoesOn() || !in.CanGive(1))
        return {};
    tidyVectorRegisters();
    std::unique_lock guard(lock);
    oldest = next;
    limit = std::max(limit, std::min(in.Position() + std::max(wanted, fewestBytes), in.End()));
    startHelpers();
    changed.notify_all();
    while (!stretchAt(next).IsReady) {
        if (canBegin())
            workOnOne(guard, ownBuffer);
        else
            changed.wait(guard);
    }
    Stretch& stretch = stretchAt(next);
    if (stretch.Failure)
        std::rethrow_exception(stretch.Failure);
    if (stretch.End < stretch.To) // it could not be cut
        return {};
    stretch.IsReady = false;
    in.Seek(stretch.End);
    return std::size_t(next++) % stretches.size();
}
