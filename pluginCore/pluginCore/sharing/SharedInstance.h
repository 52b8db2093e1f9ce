#pragma once

#include <juce_core/juce_core.h>

#include <memory>
#include <utility>

namespace cv::pluginCore
{
/** What a process needs one of, for as long as somebody holds it: made for the first holder, found by those
    who come while it lives, gone with the last.

    Any thread. Where a holder comes on one thread while the last one goes on another, the new object may be
    made before the old one has ended.
*/
template <typename Type>
class SharedInstance
{
public:
    /** The object that lives, or a new one made from the arguments. Its constructor must not ask for this
        same instance.
    */
    template <typename... Arguments>
    static std::shared_ptr<Type> get (Arguments&&... arguments)
    {
        auto& slot = getSlot();
        const juce::SpinLock::ScopedLockType lock (slot.mutex);
        auto instance = slot.current.lock();

        if (instance == nullptr)
        {
            instance = std::make_shared<Type> (std::forward<Arguments> (arguments)...);
            slot.current = instance;
        }

        return instance;
    }

private:
    struct Slot
    {
        juce::SpinLock mutex;
        std::weak_ptr<Type> current;
    };

    static Slot& getSlot()
    {
        static Slot slot;
        return slot;
    }
};
} // namespace cv::pluginCore
