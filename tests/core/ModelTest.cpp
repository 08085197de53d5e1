#include "core/model/Enumerations.h"
#include "core/PillCatalog.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <set>

using namespace tirlo;

namespace {

template<typename Enum>
void expectRoundTrip(std::size_t count)
{
    EXPECT_EQ(allCases<Enum>().size(), count);
    for (const Enum value : allCases<Enum>())
        EXPECT_EQ(fromRawText<Enum>(rawText(value)), value);
    EXPECT_FALSE(fromRawText<Enum>(u"unknown"));
    EXPECT_FALSE(fromRawText<Enum>(u""));
}

TEST(ModelTest, RawTextsLeadBackToTheirCasesAndUnknownOnesNowhere)
{
    expectRoundTrip<BotState>(11);
    expectRoundTrip<BotEmote>(7);
    expectRoundTrip<EyeShape>(13);
    expectRoundTrip<IslandView>(17);
    expectRoundTrip<IslandMode>(3);
    expectRoundTrip<ChatProvider>(3);
    expectRoundTrip<PillCategory>(4);
}

TEST(ModelTest, TheCatalogueKnowsItsRowsAndItsMainPills)
{
    std::set<QString> ids;
    QStringList mainPills;
    for (const PillDefinition &row : PillCatalog::all()) {
        ids.insert(row.id);
        EXPECT_EQ(PillCatalog::definition(row.id), &row);
        if (PillCatalog::canBeMainPill(row.id))
            mainPills.append(row.id);
    }
    EXPECT_EQ(ids.size(), 15u);
    EXPECT_EQ(
        mainPills,
        QStringList({"integration_claude", "agent_cursor", "agent_antigravity", "agent_codex"}));
    EXPECT_EQ(PillCatalog::definition("agent_foo"), nullptr);
    EXPECT_FALSE(PillCatalog::canBeMainPill("agent_gemini"));
}

} // namespace
