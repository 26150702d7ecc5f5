// The enhanced argument line: composing, splitting, taking apart, quote substitution.

#include "shortcuts/ArgumentLine.h"

namespace {

const char Quote = '"';
const unsigned char LastBlank = 0x20;

// Takes the first byte off text, which must not be empty; the cut only moves the cursor.
char TakeFirst(CTextString& text)
{
    const char first = text.Text()[0];
    text.KeepRight(text.Length() - 1);
    return first;
}

struct Key {
    const char* text;
    int length;
};
// In the order of testing: the first key that a token starts with decides.
const Key Keys[] = {{"profile=", 8}, {"target=", 7}, {"targetDir=", 10}, {"args=", 5}};
enum KeyIndex { ProfileIndex, TargetIndex, TargetDirIndex, ArgsIndex, NoKey };

KeyIndex KeyOf(const CTextString& token)
{
    for (int k = ProfileIndex; k < NoKey; ++k) {
        if (BeginsWithNoCase(token, Keys[k].text, Keys[k].length))
            return static_cast<KeyIndex>(k);
    }
    return NoKey;
}

// False when the line did not grow by the whole item.
bool AppendItem(CTextString& line, const char* key, const CTextString& value)
{
    return AppendWhole(line, key) && AppendWhole(line, "\"") && AppendWhole(line, value) && AppendWhole(line, "\"");
}

bool AppendSpacedItem(CTextString& line, const char* key, const CTextString& value)
{
    return AppendWhole(line, " ") && AppendItem(line, key, value);
}

}  // namespace

bool Tokenize(const CTextString& source, CChain<CTextString>& tokens)
{
    tokens.Clear();
    CTextString rest(source);
    if (rest.Length() != source.Length())
        return false;
    bool whole = true;
    Trim(rest, 0, LastBlank);
    while (!rest.IsEmpty()) {
        CTextString token(0);
        bool lost = false;
        bool quoted = false;
        while (!rest.IsEmpty()) {
            const char byte = TakeFirst(rest);
            if (byte == Quote) {
                if (quoted)
                    break;
                quoted = true;
                continue;
            }
            if (!quoted && static_cast<unsigned char>(byte) <= LastBlank)
                break;
            const int before = token.Length();
            token.AppendChar(byte);
            lost = lost || token.Length() == before;
        }
        TrimLeft(rest, 0, LastBlank);
        if (lost)
            whole = false;
        else if (!token.IsEmpty() && !InsertEntry(tokens, token))
            whole = false;
    }
    return whole;
}

CTextString ComposeArguments(const CTextString& target, const CTextString& workDir,
                             const CTextString& args, const CChain<CTextString>& profiles)
{
    CTextString line(0);
    bool whole = true;
    for (const CChainNode<CTextString>* node = profiles.Head(); node && whole; node = node->next) {
        whole = line.IsEmpty() ? AppendItem(line, Keys[ProfileIndex].text, *node->payload)
                               : AppendSpacedItem(line, Keys[ProfileIndex].text, *node->payload);
    }
    // Always written, even first on the line and even with an empty value.
    whole = whole && AppendSpacedItem(line, Keys[TargetIndex].text, target);
    if (whole && !workDir.IsEmpty())
        whole = AppendSpacedItem(line, Keys[TargetDirIndex].text, workDir);
    if (whole && !args.IsEmpty())
        whole = AppendSpacedItem(line, Keys[ArgsIndex].text, args);
    if (!whole)
        line.MakeEmpty();
    return line;
}

bool TakeApartArguments(const CTextString& line, CChain<CTextString>& tokens,
                        CChain<CTextString>& profiles, CTextString& target,
                        CTextString& workDir, CTextString& args)
{
    if (line.IsEmpty())
        return true;
    bool whole = Tokenize(line, tokens);
    for (const CChainNode<CTextString>* node = tokens.Head(); node && whole; node = node->next) {
        const CTextString& token = *node->payload;
        const KeyIndex key = KeyOf(token);
        if (key == NoKey)
            continue;
        const CTextString value = token.Right(token.Length() - Keys[key].length);
        if (value.Length() != token.Length() - Keys[key].length)
            return false;
        switch (key) {
        case ProfileIndex:
            whole = value.IsEmpty() || InsertEntry(profiles, value);
            break;
        case TargetIndex:
            whole = AssignWhole(target, value);
            break;
        case TargetDirIndex:
            whole = AssignWhole(workDir, value);
            break;
        case ArgsIndex:
            whole = AssignWhole(args, value);
            break;
        case NoKey:
            break;
        }
    }
    return whole;
}

void SubstituteQuotes(CTextString& args, char left, char right)
{
    bool open = false;
    for (int i = 0; i < args.Length(); ++i) {
        if (args.Text()[i] != Quote)
            continue;
        const char stand = open ? right : left;
        (void)args.OverwriteBytes(i, &stand, 1);
        open = !open;
    }
}

bool RestoreQuotes(CTextString& args, char left, char right)
{
    const CTextString quote(Quote);
    const CTextString leftText(left);
    const CTextString rightText(right);
    // A missing one-byte string would turn a replacement into a deletion. One byte for
    // one byte is replaced in place, so nothing else can fail.
    if (!quote.HasAllocation() || !leftText.HasAllocation() || !rightText.HasAllocation())
        return false;
    args.Replace(leftText, quote);
    args.Replace(rightText, quote);
    return true;
}
