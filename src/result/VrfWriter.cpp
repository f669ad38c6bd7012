#include "result/VrfWriter.h"

#include "platform/base/Codepage.h"
#include "platform/base/WholeFile.h"
#include "result/readers/VrfReader.h"

#include <limits>
#include <utility>

namespace {

constexpr qint64 mostAtOnce = 32768;
constexpr qint64 reservedBytes = 16;

/// Takes numbers and texts as the format has them. Without a file it only counts the bytes.
class Output {
public:
    explicit Output(WholeFile* target) : file(target) {}
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    ~Output() { flush(); }

    void Bytes(const void* bytes, qint64 count) {
        written += count;
        if (!file)
            return;
        waiting.append(static_cast<const char*>(bytes), count);
        if (waiting.size() > enough)
            flush();
    }
    template<class... T>
    void Put(T... values) {
        (Bytes(&values, sizeof values), ...);
    }
    void Text(const QString& text) {
        const QByteArray bytes = Codepage::Encode(text);
        Put(std::int32_t(bytes.size()));
        Bytes(bytes.constData(), bytes.size());
    }
    bool OnlyCounts() const { return !file; }
    void Skip(qint64 count) { written += count; }
    qint64 Written() const { return written; }

private:
    static constexpr qsizetype enough = 1 << 16;
    void flush() {
        if (file)
            file->write(std::exchange(waiting, {}));
    }

    WholeFile* file;
    QByteArray waiting;
    qint64 written = 0;
};

void writeMesh(const MeshData& mesh, Output& out) {
    out.Put(mesh.NodeCount, mesh.ElementCount);
    for (std::int32_t i = 0; i < mesh.NodeCount; ++i)
        out.Put(double(mesh.Nodes.X.at(i)), double(mesh.Nodes.Y.at(i)));
    const ElementTable& elements = mesh.Elements;
    for (std::int32_t e = 0; e < mesh.ElementCount; ++e) {
        out.Put(elements.NodeCount(e));
        for (std::int32_t k = elements.FirstCorner.at(e); k < elements.FirstCorner.at(e + 1); ++k)
            out.Put(elements.NodeIndex.at(k) + 1);
    }
    const char reserved[reservedBytes] = {};
    out.Bytes(reserved, reservedBytes);
}

/// Asks for `count` values in pieces, `read(first, values)`, and writes them as Stored.
template<class Stored, class Given, class Read>
void writeValues(qint64 count, Output& out, const Read& read) {
    if (out.OnlyCounts())
        return out.Skip(count * qint64(sizeof(Stored)));
    std::vector<Given> given(std::size_t(std::min(count, mostAtOnce)));
    std::vector<Stored> stored(given.size());
    for (qint64 first = 0; first < count; first += mostAtOnce) {
        const auto here = std::size_t(std::min(mostAtOnce, count - first));
        read(first, std::span(given).first(here));
        std::ranges::copy(given, stored.begin());
        out.Bytes(stored.data(), qint64(here * sizeof(Stored)));
    }
}

void writeStep(const ResultModel& model, std::int32_t step, Output& out) {
    const StepSource& source = *model.Source;
    out.Put(double(model.Steps.at(step).Time));
    out.Text(model.Steps.at(step).Name);
    writeValues<std::int32_t, std::int32_t>(model.Mesh.ElementCount, out,
                                            [&](qint64 first, auto types) { source.ReadTypes(step, first, types); });
    for (std::int32_t item = 0; item < model.ItemCount; ++item) {
        const std::int32_t count = source.ValueCount(step, item);
        out.Put(count);
        writeValues<double, float>(std::max(count, 0), out,
                                   [&](qint64 first, auto values) { source.ReadValues(step, item, first, values); });
    }
}

void write(const ResultModel& model, Output& out) {
    out.Bytes(VrfReader::Magic.data(), VrfReader::Magic.size());
    // The version of another format says nothing about this one.
    constexpr std::int32_t own = 100;
    out.Put(model.Magic == VrfReader::Magic ? model.Version : own);
    out.Text(model.Title);
    out.Put(model.ItemCount);
    for (const ItemInfo& item : model.Items) {
        out.Text(item.Name);
        out.Put(item.ElementType, item.Flags);
    }
    writeMesh(model.Mesh, out);
    for (std::int32_t step = 0; step < model.StepCount; ++step)
        writeStep(model, step, out);
}

} // namespace

std::optional<QString> VrfWriter::Write(const ResultModel& model, const QString& path) {
    Output size(nullptr);
    write(model, size);
    if (size.Written() > std::numeric_limits<std::int32_t>::max())
        return u"2 GB を超えるため、この形式では保存できません。"_s;
    WholeFile file(path);
    {
        Output out(&file);
        write(model, out);
    }
    return file.Commit();
}
