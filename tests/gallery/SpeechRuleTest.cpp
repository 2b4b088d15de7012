// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The rule of what is heard, broken on purpose as the others.
#include "Speech.h"

#include <gtest/gtest.h>

namespace {

using gallery::Utterances;

Utterances heard(const std::string& line)
{
    return {{line}, {"PIN", "Type it. To: Ann", "04 2719", "Box"}, "Cancel", "Button, 1 of 2.", "04 2719"};
}

TEST(TheRuleOfSpeech, HoldsForWhatIsDrawnInItsOrder)
{
    const Utterances good[] = {heard("PIN. Type it. To: Ann. 0 4, 2 7 1 9. Box. Cancel. Button, 1 of 2."),
        {{"Look."}, {"Look"}, "", "", ""}, {{}, {}, "", "", ""},
        {{"PIN. Yes. Button.", "Look."}, {"PIN", "Look", "PIN"}, "Yes", "Button.", ""},
        {{"From Anna Lake. Go. To: Bob. OK. Button."}, {"From An… Go.", "To: B…"}, "OK", "Button.", ""}};
    for (const Utterances& utterances : good)
        EXPECT_TRUE(gallery::checkSpeech(utterances).empty()) << gallery::checkSpeech(utterances)[0].detail;
}

TEST(TheRuleOfSpeech, IsBrokenByEachFault)
{
    const char* faults[] = {
        "Type it. To: Ann. 0 4, 2 7 1 9. Box. Cancel. Button, 1 of 2.", // no title
        "PIN. Type it. To: Ann. 0 4, 2 7 1 9. Cancel. Button, 1 of 2.", // no last text
        "PIN. 0 4, 2 7 1 9. Type it. To: Ann. Box. Cancel. Button, 1 of 2.", // another order
        "PIN. Type it. To: Ann. 04 2719. Box. Cancel. Button, 1 of 2.", // a number
        "PIN. Type it. To: Ann. 0 4 2 7 1 9. Box. Cancel. Button, 1 of 2.", // no pause in it
        "PIN. Type it. To: Ann. 0 4, 2 7 1 9. Box. No. Button, 1 of 2.", // another button
        "PIN. Type it. To: Ann. 0 4, 2 7 1 9. Box. Cancel. Button.", // no place
        "PIN. Type it. To: Ann. 0 4, 2 7 1 9. Box. Cancel. Button, 1 of 2. No.", // one more
        "PIN. PIN. Type it. To: Ann. 0 4, 2 7 1 9. Box. Cancel. Button, 1 of 2.", // twice
        "PIN Type it. To: Ann. 0 4, 2 7 1 9. Box. Cancel. Button, 1 of 2.", // run together
        "PIN,, Type it. To: Ann. 0 4, 2 7 1 9. Box. Cancel. Button, 1 of 2.", // an empty part
        "",
    };
    for (const char* fault : faults)
        EXPECT_FALSE(gallery::checkSpeech(heard(fault)).empty()) << fault;
    const Utterances silentOrTalkative[] = {{{}, {"Look"}, "", "", ""}, {{}, {}, "No", "Button.", ""},
        {{"No. Button."}, {}, "", "", ""}, {{"PIN. Yes. Button.", "PIN."}, {"PIN"}, "Yes", "Button.", ""},
        {{"From Anna Lake. OK. Button."}, {"From An… Go."}, "OK", "Button.", ""}, // the end of it is missing
        {{"Lake. Go. OK. Button."}, {"From An… Go."}, "OK", "Button.", ""}};
    for (const Utterances& utterances : silentOrTalkative)
        EXPECT_FALSE(gallery::checkSpeech(utterances).empty());
}

} // namespace
