#include "support/SystemLanguage.h"

#include <langinfo.h>

#include <utility>

namespace cv::test
{
namespace
{
constexpr const char* usualLanguage = "en";

std::string currentLanguage = usualLanguage;
std::string currentRegion;
} // namespace

SystemLanguage::SystemLanguage (std::string language, std::string region)
{
    currentLanguage = std::move (language);
    currentRegion = std::move (region);
}

SystemLanguage::~SystemLanguage()
{
    currentLanguage = usualLanguage;
    currentRegion.clear();
}

// The linker's --wrap sends every call of NAME to __wrap_NAME and __real_NAME to the original.
extern "C"
{
    char* __real_nl_langinfo (nl_item);

    char* __wrap_nl_langinfo (nl_item item)
    {
        if (item == _NL_ADDRESS_LANG_AB)
            return currentLanguage.data();

        if (item == _NL_ADDRESS_COUNTRY_AB2)
            return currentRegion.data();

        return __real_nl_langinfo (item);
    }
}
} // namespace cv::test
