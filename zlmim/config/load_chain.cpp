#include "zlmim/config/load_chain.h"

#include <algorithm>
#include <utility>

namespace ZLMIM
{

LoadChain::Link::Link(LoadChain& chain, std::u16string fileIdentity) : mChain(chain)
{
    mChain.mFiles.push_back(std::move(fileIdentity));
}

LoadChain::Link::~Link() { mChain.mFiles.pop_back(); }

bool LoadChain::Admit(const std::u16string& fileIdentity)
{
    if (mModels >= kMaxModels)
        return false;
    ++mModels;
    return mFiles.size() < kMaxModelDepth &&
           std::find(mFiles.begin(), mFiles.end(), fileIdentity) == mFiles.end();
}

} // namespace ZLMIM
