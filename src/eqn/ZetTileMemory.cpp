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
    if (bytes == 0 || bytes / size != static_cast<unsigned long>(type.size()) || kept == m_blocks.end()) {
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
    const std::size_t lines = count / std::size(Line().doubles) + 1;
    if (m_lineCount < lines) {
        m_lines.reset();
        m_lineCount = 0;
        m_lines = std::make_unique_for_overwrite<Line[]>(lines);
        m_lineCount = lines;
    }
    return m_lines[0].doubles;
}

}  // namespace internal
}  // namespace zet
