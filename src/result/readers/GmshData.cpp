#include "result/readers/GmshData.h"

#include "result/readers/GmshNumbers.h"

void GmshData::readSection(const Section& section, std::size_t components, Place place, std::vector<float>& values,
                           std::vector<std::int32_t>& counts) const {
    FileScanner scanner(File);
    scanner.Seek(section.Offset);
    GmshNumbers in(scanner);
    in.IsText = IsText;
    in.IsBigEndian = IsBigEndian;
    const GmshNumbers::Run run(in, section.Entries * std::int64_t(components + 1), GmshNumbers::Run::OfReals);
    std::array<double, MostComponents> row;
    const std::span<double> entry(row.data(), components);
    for (std::int64_t left = section.Entries; left > 0; --left) {
        std::int64_t id = 0, nodes = 1;
        if (!in.Int(id) || (place == Place::ElementNodes && !in.Int(nodes)) || !in.CanHold(nodes, NumberType::Float64))
            return;
        const std::int32_t index = (place == Place::Nodes ? PointIndex : CellIndex).Of(id);
        for (std::int64_t n = 0; n < nodes; ++n) {
            std::int32_t target = index;
            if (place == Place::ElementNodes && index >= 0) {
                const auto all = NodesOfCells.NodesOf(index);
                target = n < std::ssize(all) ? all[std::size_t(n)] : -1;
            }
            if (!in.Reals(entry))
                return;
            if (target < 0)
                continue;
            float* sum = &values[std::size_t(target) * components];
            for (const double value : entry) {
                *sum = place == Place::ElementNodes ? *sum + float(value) : float(value);
                ++sum;
            }
            if (place == Place::ElementNodes)
                ++counts[std::size_t(target)];
        }
    }
}

std::vector<float> GmshData::Read(std::int32_t step, const ForeignArray& info, std::int32_t array) const {
    const Place place = Places[std::size_t(array)];
    const auto components = std::size_t(info.Components);
    std::vector<float> values((place == Place::Elements ? Cells : Points) * components);
    std::vector<std::int32_t> counts(place == Place::ElementNodes ? Points : 0);
    for (const Section& section : Sections)
        if (section.Array == std::size_t(array) && section.Step == Steps[std::size_t(step)])
            readSection(section, components, place, values, counts);
    for (std::size_t node = 0; node < counts.size(); ++node)
        for (std::size_t c = 0; counts[node] > 1 && c < components; ++c)
            values[node * components + c] /= float(counts[node]);
    return values;
}

/// In a binary section that has the whole array; whether it has it in order is seen by the numbers.
std::optional<DirectArray> GmshData::Find(std::int32_t step, const ForeignArray& info, std::int32_t array) const {
    const Place place = Places[std::size_t(array)];
    const auto isWanted = [&](const Section& section) {
        return section.Array == std::size_t(array) && section.Step == Steps[std::size_t(step)];
    };
    const auto section = std::ranges::find_if(Sections, isWanted);
    if (IsText || place == Place::ElementNodes || section == Sections.end() ||
        std::any_of(section + 1, Sections.end(), isWanted))
        return {};
    constexpr qint64 idBytes = sizeof(std::int32_t), realBytes = sizeof(double);
    return DirectArray{
        File, section->Offset, idBytes + info.Components * realBytes, section->Entries,
        BinaryRecord(NumberType::Float64, IsBigEndian, place == Place::Nodes ? &PointIndex : &CellIndex)};
}
