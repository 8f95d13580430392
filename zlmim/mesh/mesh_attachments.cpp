#include "zlmim/mesh/mesh.h"
#include "zlmim/model/text.h"
#include "zlmim/reader/block.h"

namespace ZLMIM
{

void Mesh::SkipInfluences(FileCursor& cursor)
{
    if (const auto block = Block::EnterOptional(cursor, "INFL"))
        block->Leave(cursor);
}

void Mesh::ReadAttachments(FileCursor& cursor)
{
    // Replaced even if the file has no such block.
    Attachments = std::make_shared<Collection<Attachment>>();
    const auto block = Block::EnterOptional(cursor, "ATCH");
    if (!block)
        return;

    AttVersion = cursor.GetLong();
    const std::int32_t count = cursor.GetLong();
    for (std::int32_t i = 0; i < count; ++i)
    {
        cursor.Budget().ChargeObjects<Attachment>();
        const auto attachment = std::make_shared<Attachment>();
        attachment->Name = cursor.GetString();
        MakeLowerCase(attachment->Name);
        attachment->Matrix = cursor.GetMatrix();
        Attachments->Add(attachment);
    }

    block->Leave(cursor);
}

} // namespace ZLMIM
