// The commands of docs/bandmath.md, and what they print.

#include <fstream>

#include "Computing"

namespace bandmath::test {

namespace {

TEST_F(RasterTest, transcriptOfThePage)
{
    RasterPlan plan{3, 1, GDT_UInt16};
    plan.bands = {toComplex({0, 0, 0}), toComplex({0, 0, 0}), toComplex({900, 400, 1200}),
                  toComplex({1100, 3600, 1200})};
    make("scene.tif", plan);
    std::ofstream(path("ndvi.txt")) << "clip(round(v*100+100), 0, 200);\nv = (nir - red) / (nir + red)\n";
    followPage();
}

}  // namespace

}  // namespace bandmath::test
