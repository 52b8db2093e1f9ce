#pragma once

#include <string>

namespace cv::test
{
/** What the C library tells of the user's language, for as long as this lives: a language such as "fr"
    and a region such as "CA" or none. Without one of these it is "en" in every test, whoever runs it.
    One at a time; programs that hold it have to be linked with --wrap=nl_langinfo.
*/
class SystemLanguage
{
public:
    explicit SystemLanguage (std::string language, std::string region = {});
    ~SystemLanguage();

    SystemLanguage (const SystemLanguage&) = delete;
    SystemLanguage& operator= (const SystemLanguage&) = delete;
};
} // namespace cv::test
