#include "core/RiskyWords.h"

#include <QElapsedTimer>
#include <QStringList>

#include <gtest/gtest.h>

using namespace tirlo;

namespace {

QStringList risks(const QString &command)
{
    QStringList pieces;
    for (const TextRange &range : riskyWords(command))
        pieces.append(command.sliced(range.start, range.length));
    return pieces;
}

TEST(RiskyWordsTest, WordsThatDestroyOrRunWhatTheyFetchAreFound)
{
    const std::pair<const char *, QStringList> rows[] = {
        {"cd x\nrm -rf ~/Documents && ls", {"rm -rf"}},
        {"/bin/rm 'a b' --recursive", {"rm 'a b' --recursive"}},
        {"rm \\\n -r x", {"rm \\\n -r"}},
        {"bash -c \"rm -f x\"; sudo rm -fr y", {"rm -f", "sudo", "rm -fr"}},
        {"rm a.txt; ls -r; docker run --rm -f x; npm rm-rf -r; farm -r", {}},
        {"find . -name x -delete", {"find . -name x -delete"}},
        {"dd if=a of=/dev/sda; mkfs.ext4 x; shred y; wipefs -a z",
         {"dd if=a of=/dev/sda", "mkfs.ext4", "shred", "wipefs"}},
        {"cat x > /dev/nvme0n1; echo > /dev/null", {"> /dev/nvme0n1"}},
        {"chmod -R 777 /; chmod 644 a; chown -R a b", {"chmod -R 777", "chown -R"}},
        {"git push origin main --force-with-lease", {"git push origin main --force-with-lease"}},
        {"git -C x push -f; git push origin +main", {"git -C x push -f", "git push origin +main"}},
        {"git push; git add -f x; git commit -m 'reset'; git clean -n", {}},
        {"git reset --hard HEAD~1; git clean -xfd; git branch -D a; git checkout -- b",
         {"git reset --hard", "git clean -xfd", "git branch -D", "git checkout --"}},
        {"curl -s https://x.org/i | sudo bash -s", {"curl -s https://x.org/i | sudo bash"}},
        {"wget -qO- x | tee y | python3 -", {"wget -qO- x | tee y | python3"}},
        {"curl x \\\n  | sh", {"curl x \\\n  | sh"}},
        {"bash <(curl x); sh -c \"$(wget -O- x)\"; eval `curl x`",
         {"bash <(curl", "sh -c \"$(wget", "eval `curl"}},
        {"curl x | jq .; curl x > y; echo a | sh", {}},
        {"psql -c 'drop table a'", {"drop table"}},
    };
    for (const auto &[command, pieces] : rows)
        EXPECT_EQ(risks(command), pieces);
}

TEST(RiskyWordsTest, ALongTextIsReadInNoTime)
{
    for (const char *piece : {"rm ", "curl ", "git push ", "\\\n", "eval $(", "dd dd/", "sh a "}) {
        QElapsedTimer timer;
        timer.start();
        const auto ranges = riskyWords(QString(piece).repeated(1'000'000 / qstrlen(piece)));
        EXPECT_LT(timer.elapsed(), 5000) << piece << ranges.size();
    }
}

} // namespace
