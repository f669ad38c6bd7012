#include "result/readers/readerTable.h"

#include "app/mdApplication.h"
#include "result/readers/FrdReader.h"
#include "result/readers/GmshReader.h"
#include "result/readers/LegacyVtkReader.h"
#include "result/readers/VrfReader.h"
#include "result/readers/XmlVtkReader.h"

std::span<const ResultReader> ResultReaders() {
    static constexpr ResultReader readers[] = {
        {u"Velorin 計算結果ファイル", u"*.vrf", VrfReader::Recognises, VrfReader::Open},
        {u"VTK ファイル (旧形式)", u"*.vtk", LegacyVtkReader::Recognises, LegacyVtkReader::Open},
        {u"VTK XML ファイル", u"*.vtu;*.pvd", XmlVtkReader::Recognises, XmlVtkReader::Open},
        {u"Gmsh ファイル", u"*.msh", GmshReader::Recognises, GmshReader::Open},
        {u"CalculiX 結果ファイル", u"*.frd", FrdReader::Recognises, FrdReader::Open},
    };
    return readers;
}

const ResultReader* ReaderFor(const QString& path) {
    if (!mdApplication::FileExists(path))
        return nullptr;
    char start[RecognisedBytes];
    const qint64 size = ReadHandle::Open(path).ReadAt(0, start, sizeof start);
    for (const ResultReader& reader : ResultReaders())
        if (reader.Recognises({start, size}, path))
            return &reader;
    return nullptr;
}
