#include "zlmim/mesh/mesh.h"
#include "zlmim/model/text.h"
#include "zlmim/reader/block.h"

namespace ZLMIM
{

void Mesh::SkipInfluences()
{
    if (const auto block = Block::EnterOptional(mCursor, "INFL"))
        block->Leave(mCursor);
}

void Mesh::ReadAttachments()
{
    // Replaced even if the file has no such block.
    Attachments = std::make_shared<Collection<Attachment>>();
    const auto block = Block::EnterOptional(mCursor, "ATCH");
    if (!block)
        return;

    AttVersion = mCursor.GetLong();
    const std::int32_t count = mCursor.GetLong();
    for (std::int32_t i = 0; i < count; ++i)
    {
        mCursor.Budget().ChargeObjects<Attachment>();
        const auto attachment = std::make_shared<Attachment>();
        attachment->Name = mCursor.GetString();
        MakeLowerCase(attachment->Name);
        attachment->Matrix = mCursor.GetMatrix();
        Attachments->Add(attachment);
    }

    block->Leave(mCursor);
}

} // namespace ZLMIM
