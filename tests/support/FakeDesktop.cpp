#include "support/FakeDesktop.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace cv::test
{
FakeDesktop::FakeDesktop() : formerPath (juce::SystemStats::getEnvironmentVariable ("PATH", {}))
{
    const auto opener = scratch.getFile ("xdg-open");
    EXPECT_TRUE (opener.replaceWithText ("#!/bin/sh\nprintf %s \"$1\" > '" + note.getFullPathName() + "'\n", false,
                                         false, "\n"));
    EXPECT_TRUE (opener.setExecutePermission (true));
    setenv ("PATH", scratch.getFolder().getFullPathName().toRawUTF8(), 1);
}

FakeDesktop::~FakeDesktop()
{
    setenv ("PATH", formerPath.toRawUTF8(), 1);
}

juce::String FakeDesktop::getOpenedPath() const
{
    return note.loadFileAsString();
}
} // namespace cv::test
