#include "result/readers/LegacyVtkBlock.h"

std::optional<NumberType> LegacyVtkBlock::TypeOf(std::string_view name) {
    static constexpr std::pair<std::string_view, NumberType> names[] = {
        {"unsigned_char", NumberType::UInt8},   {"char", NumberType::Int8},
        {"unsigned_short", NumberType::UInt16}, {"short", NumberType::Int16},
        {"unsigned_int", NumberType::UInt32},   {"int", NumberType::Int32},
        {"unsigned_long", NumberType::UInt64},  {"long", NumberType::Int64},
        {"float", NumberType::Float32},         {"double", NumberType::Float64},
        {"vtkidtype", NumberType::Int32},       {"vtktypeint64", NumberType::Int64},
        {"vtktypeuint64", NumberType::UInt64},  {"vtktypeint32", NumberType::Int32}};
    const QByteArray lower = QByteArray(name.data(), qsizetype(name.size())).toLower();
    const auto* const found =
        std::ranges::find(names, std::string_view(lower), [](const auto& row) { return row.first; });
    return found == std::end(names) ? std::nullopt : std::optional(found->second);
}

bool LegacyVtkBlock::Skip(FileScanner& in) const {
    if (IsText)
        return SkipWords(in, Count);
    const qint64 bytes = Count * BytesOf(Type);
    const bool isThere = bytes <= in.Remaining();
    in.Seek(in.Position() + std::min(bytes, in.Remaining()));
    return isThere;
}
