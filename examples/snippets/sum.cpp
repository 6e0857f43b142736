// sum: adds numbers. The marked lines stand in docs/cmdline.md.

#include <iostream>

#include <zet/ZetClMultiUnlabeledArg>
#include <zet/ZetClParser>
#include <zet/ZetClValueArg>

int main(int argc, char** argv)
{
    // README begin
    zet::ZetClParser parser(L"Adds numbers.", L"1.0", L'=', true);
    const zet::ZetClArgPtr start = new zet::ZetClValueArg(
        zet::ZetMetaProperty(L's', L"start", L"the number to begin with", zet::ZetMetaType::Double), L"0");
    const zet::ZetClArgPtr numbers = new zet::ZetClMultiUnlabeledArg(
        zet::ZetMetaProperty(0, L"numbers", L"the numbers to add", zet::ZetMetaType::Double), zet::ZetVariantList());
    parser.add(start);
    parser.add(numbers);
    parser.parse(argc, argv);
    double sum = start->value().value<double>();
    for (const zet::ZetVariant& number : numbers->value().value<zet::ZetVariantList>()) {
        sum += number.value<double>();
    }
    // README end
    std::cout << sum << '\n';
    return 0;
}
