#include <tools/Saving.h>

#include <host/losses/Examine.h>
#include <tools/Hints.h>

namespace Tools {

std::optional<Host::Refusal> lossesOf(const Ref<Host::FileStripe>& file)
{
    const auto examination = Host::examine(file);
    if (!examination)
        return examination.refusal();
    if (examination->losses.countOfMeaning() == 0)
        return {};
    return Host::Refusal{"saving loses " + examination->losses.summary() + lossesHint};
}

} // namespace Tools
