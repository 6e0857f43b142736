// A vegetation index over pixels in memory. The marked lines stand in the README.

#include <iostream>

#include <zet/ZetEqnParser>
#include <zet/ZetEqnTile>

int main()
{
    unsigned short redPixels[] = {900, 400, 1200, 700};
    unsigned short nirPixels[] = {1100, 3600, 1200, 2800};

    // README begin
    zet::ZetEqnParser equation;
    zet::ZetTextMsg problem(L"", zet::ZetTextMsg::Error);
    if (!equation.parse(L"(nir - red) / (nir + red)", &problem)) {
        std::wcerr << problem << L'\n';  // "error: Parsing error at column #..."
        return 1;
    }
    zet::ZetEqnTile red(new zet::ZetBuffer(sizeof redPixels, redPixels, false), zet::ZetDataType::U16, 4);
    zet::ZetEqnTile nir(new zet::ZetBuffer(sizeof nirPixels, nirPixels, false), zet::ZetDataType::U16, 4);
    equation.setValue(L"red", red);
    equation.setValue(L"nir", nir);
    zet::ZetEqnTile index = equation.evaluate(&problem).value<zet::ZetEqnTile>();             // Double: 0.1 0.8 0 0.6
    zet::ZetEqnTile bytes = (index * 100.0 + 100.0).roundclip(zet::ZetDataType::U8, 0, 200);  // U8: 110 180 100 160
    // README end

    for (unsigned long i = 0; i < index.size(); ++i) {
        std::wcout << index.elements<double>()[i] << L' ' << static_cast<int>(bytes.elements<unsigned char>()[i])
                   << L'\n';
    }
    return 0;
}
