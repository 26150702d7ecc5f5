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
// block is too short to hold its header or name.
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
    if (wide) {
        for (std::size_t i = start; i + 1 < size && block[i] != 0; i += 2)
            path.AppendBytes(block + i, 2);
    } else {
        const char zero = 0;
        for (std::size_t i = start; i < size && block[i] != 0; ++i) {
            path.AppendBytes(block + i, 1);
            path.AppendBytes(&zero, 1);
        }
    }
    return true;
}

}   // namespace

// Each drag decides anew. The name waits in m_droppedPath until the drop.
int CLinkDropTarget::OnDragEnter(const void* dropFiles, std::size_t size, std::uint32_t /*keyState*/)
{
    m_dropEffect = DropEffectNone;
    m_droppedPath.MakeEmpty();
    if (!m_interfacesReady || !FirstDroppedName(dropFiles, size, m_droppedPath))
        return m_dropEffect;
    m_droppedPath.AppendChar('\0');
    const CTextString tail = m_droppedPath.Right(m_linkSuffix.Length());
    if (tail.CompareNoCase(m_linkSuffix.Text(), m_linkSuffix.Length()) == 0)
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
    m_linkPath.Assign(m_droppedPath);
    if (LoadLink()) {
        if (m_owner)
            m_owner->QueueAppMessage();
        return true;
    }
    ReportLoadFailure();
    return false;
}
