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
        if (token.Left(Keys[k].length).CompareNoCase(Keys[k].text, Keys[k].length) == 0)
            return static_cast<KeyIndex>(k);
    }
    return NoKey;
}

void AppendItem(CTextString& line, const char* key, const CTextString& value)
{
    line.Append(key);
    line.AppendChar(Quote);
    line.Append(value);
    line.AppendChar(Quote);
}

}  // namespace

void Tokenize(const CTextString& source, CChain<CTextString>& tokens)
{
    tokens.Clear();
    CTextString rest(source);
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
        if (!lost && !token.IsEmpty())
            (void)InsertEntry(tokens, token);
    }
}

CTextString ComposeArguments(const CTextString& target, const CTextString& workDir,
                             const CTextString& args, const CChain<CTextString>& profiles)
{
    CTextString line(0);
    for (const CChainNode<CTextString>* node = profiles.Head(); node; node = node->next) {
        if (!line.IsEmpty())
            line.AppendChar(' ');
        AppendItem(line, Keys[ProfileIndex].text, *node->payload);
    }
    // Always written, even first on the line and even with an empty value.
    line.AppendChar(' ');
    AppendItem(line, Keys[TargetIndex].text, target);
    if (!workDir.IsEmpty()) {
        line.AppendChar(' ');
        AppendItem(line, Keys[TargetDirIndex].text, workDir);
    }
    if (!args.IsEmpty()) {
        line.AppendChar(' ');
        AppendItem(line, Keys[ArgsIndex].text, args);
    }
    return line;
}

void TakeApartArguments(const CTextString& line, CChain<CTextString>& tokens,
                        CChain<CTextString>& profiles, CTextString& target,
                        CTextString& workDir, CTextString& args)
{
    if (line.IsEmpty())
        return;
    Tokenize(line, tokens);
    for (const CChainNode<CTextString>* node = tokens.Head(); node; node = node->next) {
        const CTextString& token = *node->payload;
        const KeyIndex key = KeyOf(token);
        if (key == NoKey)
            continue;
        const CTextString value = token.Right(token.Length() - Keys[key].length);
        // A value whose memory could not be had is dropped with its item.
        if (!value.HasAllocation())
            continue;
        switch (key) {
        case ProfileIndex:
            if (!value.IsEmpty())
                (void)InsertEntry(profiles, value);
            break;
        case TargetIndex:
            target.Assign(value);
            break;
        case TargetDirIndex:
            workDir.Assign(value);
            break;
        case ArgsIndex:
            args.Assign(value);
            break;
        case NoKey:
            break;
        }
    }
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

void RestoreQuotes(CTextString& args, char left, char right)
{
    const CTextString quote(Quote);
    const CTextString leftText(left);
    const CTextString rightText(right);
    // A missing one-byte string would turn a replacement into a deletion.
    if (!quote.HasAllocation() || !leftText.HasAllocation() || !rightText.HasAllocation())
        return;
    args.Replace(leftText, quote);
    args.Replace(rightText, quote);
}
