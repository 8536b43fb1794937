"""Version files and library selections."""

_VERSIONS = [
    "1.4.3", "1.4.4", "1.4.5", "1.5.4", "1.5.5", "1.5.6", "2017.05.9", "2017.06.0", "2017.6.0",
    "2017.6.1", "2017.10.22", "2017.10.23", "2017.10.99", "2018.10.9", "2018.10.10", "2018.11.0",
    "2019.02.6", "2019.02.99", "2019.06.1", "2019.06.2", "2021.09.9", "2021.10.0", "2021.10.5",
    "2021.11.0", "2022.10.1", "2023.4.1", "2023.4.2", "2023.4.3", "2024.1.1",
]
_ODD_VERSIONS = [
    "", "0", "1", "1.4", "1.4.4.9", "x", "1.x.4", "1.4.4a", " 1.5.4 ", "1. 5.4", "99999999999.1.1",
    "2147483648.0.0", "+1.4.4", "1,4,4", ".1.4", "1..4", "01.05.04", "\t1.5.4", "1.5.4\xa0",
    "v1.5.4",
]

_GOOD_FILE = """<?xml version="1.0" encoding="UTF-8"?>
<SigTrakVersions>
    <TopVersion>{top}</TopVersion>
    <VersionList>1.4.4 1.5.5
        {top}</VersionList>
    <Restrictions>
{restrictions}    </Restrictions>
</SigTrakVersions>
"""
_RESTRICTION = """        <VersionRestriction>
            <Check>{check}</Check>
{warning}        </VersionRestriction>
"""
_CHECKS = [
    "sigTrak+2017.06.0-2021.10.0", "sigTrak+2021.10.0-$TopVersion$",
    "sigTrak+1.5.5-2017.06.0+2018.10.10-2018.10.99", "sigTrak+1.4.4-", "sigTrak+-1.5.5",
    "otherLib+1.0.0-2.0.0", "sigTrak", "", "sigTrak+2017.06.0", "other+1-2;sigTrak+1.5.0-2018.0.0",
    "  sigTrak+1.4.4-1.5.5\n   ", "sigTrak + 1.4.4 - 1.5.5",
    "sigTrak+1.4.4-1.5.5;sigTrak+2017.06.0-2018.10.0",
]
_WARNINGS = [
    "", "<MessageWarning>careful</MessageWarning>\n",
    "<MessageWarning>  two\n   lines </MessageWarning>\n", "<MessageWarning/>\n",
    "<MessageWarning>&lt;a&gt; &amp; &#176;</MessageWarning>\n", "<Other>x</Other>\n",
    "<MessageWarning>first</MessageWarning><MessageWarning>second</MessageWarning>\n",
]
_DAMAGES = [
    lambda text: "",
    lambda text: text[:-3],
    lambda text: text.replace("</TopVersion>", ""),
    lambda text: text + "<more/>",
    lambda text: text + "junk",
    lambda text: text.replace("TopVersion>", "topVersion>"),
    lambda text: "junk" + text,
    lambda text: text.replace("<VersionList>", "<Versions>").replace(
        "</VersionList>", "</Versions>"
    ),
    lambda text: text.replace("<SigTrakVersions>", "<SigTrakVersions><Extra/>"),
    lambda text: text.replace("<VersionList>", "<VersionList><!-- remark -->"),
    lambda text: text.split("?>\n")[-1],
    lambda text: text.replace(
        "</Restrictions>", "<Unknown><Check>x</Check></Unknown></Restrictions>"
    ),
    lambda text: text.replace("<Restrictions>", "<Between/><Restrictions>"),
    lambda text: "\xef\xbb\xbf" + text,
    lambda text: text.replace("\n", "\r\n"),
    lambda text: text.replace("&", "&unknown;"),
    lambda text: text.replace("1.5.5", "1.5.5 \xff"),
    lambda text: text.replace("<TopVersion>", "<TopVersion attribute='x'>"),
    lambda text: text.replace("<TopVersion>", "<TopVersion><![CDATA[2]]>"),
    lambda text: text.replace("TopVersion>", "Top>"),
    lambda text: text.replace("Check>", "check>"),
    lambda text: "\n" + text,
]


def plain_version_file():
    """One as it is shipped."""
    restrictions = _RESTRICTION.format(
        check=_CHECKS[0], warning=_WARNINGS[1]
    ) + _RESTRICTION.format(check=_CHECKS[1], warning="")
    return _GOOD_FILE.format(top="2023.4.2", restrictions=restrictions).encode("ascii")


def version_file(dice):
    """A version file: mostly well-formed, sometimes odd or damaged."""
    top = dice.pick(
        ["2023.4.2"] * 5 + _VERSIONS[-6:] + ["1.5.0", "", "  2023.4.2 ", "2023", "abc", "2017.06.0"]
    )
    restrictions = "".join(
        _RESTRICTION.format(check=dice.pick(_CHECKS), warning=dice.pick(_WARNINGS))
        for _ in range(dice.few(4))
    )
    text = _GOOD_FILE.format(top=top, restrictions=restrictions)
    if dice.chance(0.25):
        text = dice.pick(_DAMAGES)(text)
    return text.encode("latin-1")


def selection(dice):
    """A value of the option -l."""
    first, second, third = (_version(dice) for _ in range(3))
    if dice.chance(0.3):
        return f"sigTrak={first}"
    return dice.pick(
        [
            f"sigTrak={first}", first,
            f"sigTrak+{first}-{second}", f"sigTrak+{first}-{second}", f"sigTrak+{first}-{second}",
            f"sigTrak+{first} - {second}", f"sigTrak+{first}", f"sigTrak+{first}-",
            f"sigTrak+-{second}", f"sigTrak={first}-{second}", f"otherLib={first}",
            f"sigTrak={first};otherLib={second}", f"otherLib={first};sigTrak={second}",
            f"sigTrak = {first}", f" sigTrak={first}", f"sigTrak=={first}", f"sigTrakX={first}",
            f"sigTrak={first};sigTrak={second}", "sigTrak", "", f"sigTrak+{first}-{second}-{third}",
            f"sigtrak={first}", f"sigTrak+{first}-{second}+{third}-", f"libs+{first}-{second}",
            f"sigTrak={first};;", f"sigTrak;{first}", f"sigTrak+{first}-{second};other=1",
            f"sigTrak\t+\t{first}-{second}", f"sigTrak={first}+{second}",
            f"sigTrak+={first}-{second}", f"a=sigTrak+{first}-{second}",
            f"sigTrak={first}=sigTrak+{second}",
        ]
    )


def _version(dice):
    if dice.chance(0.12):
        return dice.pick(_ODD_VERSIONS)
    if dice.chance(0.1):
        return f"{dice.between(1, 2024)}.{dice.below(13)}.{dice.below(30)}"
    if dice.chance(0.2):
        return f"2023.4.{dice.below(5)}"  # about the latest one of most version files
    return dice.pick(_VERSIONS)
