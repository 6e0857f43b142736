#include "eqn/ZetTileMemory"

#include <algorithm>

#include "core/ZetUnitInit"

namespace zet {
namespace internal {

void ZetTileMemory::release(ZetVariant& value)
{
    ZetBufferPtr block;
    if (value.type().type() == ZetMetaType::EqnTile && value.implementation().isUnique()) {
        block = static_cast<const ZetEqnTile*>(value.data())->buffer();
    }
    value.clear();
    if (!block.isUnique() || !block->data() || block->isExternal()) {
        return;
    }
    if (m_blocks.size() == kMostBlocks) {
        m_blocks.erase(m_blocks.begin());
    }
    m_blocks.push_back(block);
}

ZetEqnTile ZetTileMemory::makeTile(const ZetDataType& type, unsigned long size)
{
    const unsigned long bytes = size * static_cast<unsigned long>(type.size());
    const auto kept = std::find_if(m_blocks.begin(), m_blocks.end(),
                                   [&](const ZetBufferPtr& block) { return block->size() == bytes; });
    if (size == 0 || bytes / size != static_cast<unsigned long>(type.size()) || kept == m_blocks.end()) {
        ZetEqnTile tile;
        tile.initialize(type, size);
        return tile;
    }
    const ZetEqnTile tile(*kept, type, size);
    m_blocks.erase(kept);
    tile.buffer()->setDataType(ZetDataType());
    return tile;
}

double* ZetTileMemory::doubles(std::size_t count)
{
    if (m_doubleCount < count) {
        m_doubles.reset();
        m_doubleCount = 0;
        m_doubles = std::make_unique_for_overwrite<double[]>(count);
        m_doubleCount = count;
    }
    return m_doubles.get();
}

}  // namespace internal
}  // namespace zet
