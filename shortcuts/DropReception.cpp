// CLinkDropTarget, drop side: what a drag over the dialog offers, and the load on the drop.

#include "shortcuts/LinkDropTarget.h"

#include "platform/Dialog.h"

namespace {

// The DROPFILES record: pFiles (offset of the first name) at 0, fWide at 16; 20 bytes.
const std::size_t DropFilesHeaderSize = 20;
const std::size_t NamesOffsetField = 0;
const std::size_t WideField = 16;

std::uint32_t LittleEndian32(const unsigned char* bytes)
{
    return static_cast<std::uint32_t>(bytes[0]) | static_cast<std::uint32_t>(bytes[1]) << 8 |
           static_cast<std::uint32_t>(bytes[2]) << 16 | static_cast<std::uint32_t>(bytes[3]) << 24;
}

// The first name of a DROPFILES block in wide path form, the name's own bytes only. A wide
// name ends at the first unit whose low byte is zero; an ANSI byte becomes the unit of the
// same value. The block ends where size says, whatever the name list claims. False when the
// block is too short to hold its header or name, or the name could not be had whole.
bool FirstDroppedName(const void* dropFiles, std::size_t size, CTextString& path)
{
    path.MakeEmpty();
    if (!dropFiles || size < DropFilesHeaderSize)
        return false;
    const unsigned char* block = static_cast<const unsigned char*>(dropFiles);
    const std::size_t start = LittleEndian32(block + NamesOffsetField);
    const bool wide = LittleEndian32(block + WideField) != 0;
    if (start >= size)
        return false;
    int units = 0;
    if (wide) {
        for (std::size_t i = start; i + 1 < size && block[i] != 0; i += 2, ++units)
            path.AppendBytes(block + i, 2);
    } else {
        for (std::size_t i = start; i < size && block[i] != 0; ++i, ++units) {
            const char unit[2] = {static_cast<char>(block[i]), 0};
            path.AppendBytes(unit, 2);
        }
    }
    path.AppendChar('\0');
    return path.Length() == 2 * units + 1;
}

}   // namespace

// Each drag decides anew. The name waits in m_droppedPath until the drop; one that could not
// be had whole is refused, as it would name another file.
int CLinkDropTarget::OnDragEnter(const void* dropFiles, std::size_t size, std::uint32_t /*keyState*/)
{
    m_dropEffect = DropEffectNone;
    if (!m_interfacesReady || !FirstDroppedName(dropFiles, size, m_droppedPath)) {
        m_droppedPath.MakeEmpty();
        return m_dropEffect;
    }
    if (EndsWithNoCase(m_droppedPath, m_linkSuffix.Text(), m_linkSuffix.Length()))
        m_dropEffect = DropEffectCopy;
    return m_dropEffect;
}

int CLinkDropTarget::OnDragOver(std::uint32_t /*keyState*/)
{
    return m_dropEffect;
}

bool CLinkDropTarget::OnDrop(int dropEffect)
{
    if (dropEffect != DropEffectCopy)
        return false;
    if (LoadLink(m_droppedPath)) {
        if (m_owner)
            m_owner->QueueAppMessage();
        return true;
    }
    ReportLoadFailure();
    return false;
}
