#include "Like.h"

#include "Collation.h"
#include "RuntimeError.h"

// Not a regular expression: the pattern would have to be read all the same, for its sets and for
// the error of one that is not closed.

namespace {

// The inside of a set as pairs of its ranges' ends; a single character is a range of itself.
QString rangesOf(QStringView set)
{
    QString ranges;
    for (qsizetype i = 0; i < set.size(); ++i) {
        const bool isRange = i + 2 < set.size() && set[i + 1] == u'-';
        ranges += set[i];
        ranges += isRange ? set[i + 2] : set[i];
        if (isRange)
            i += 2;
    }
    return ranges;
}

bool isInRanges(QChar character, const QString& ranges)
{
    for (qsizetype i = 0; i + 1 < ranges.size(); i += 2) {
        if (character >= ranges[i] && character <= ranges[i + 1])
            return true;
    }
    return false;
}

} // namespace

LikePattern::LikePattern(const QString& pattern)
{
    const QString source = folded(pattern);
    const auto addLiteral = [this](QChar character) {
        if (tokens_.empty() || tokens_.back().kind != Token::Literal)
            tokens_.push_back({Token::Literal, {}});
        tokens_.back().characters += character;
    };
    for (qsizetype i = 0; i < source.size(); ++i) {
        if (source[i] == u'%') {
            if (tokens_.empty() || tokens_.back().kind != Token::Any)
                tokens_.push_back({Token::Any, {}});
        } else if (source[i] == u'_') {
            tokens_.push_back({Token::One, {}});
        } else if (source[i] == u'[') {
            const qsizetype end = source.indexOf(u']', i + 1);
            if (end < 0)
                throw RuntimeError(RuntimeError::EngineFault,
                                   QStringLiteral("Cadeia de caracteres padrão inválida"));
            const QStringView set = QStringView(source).mid(i + 1, end - i - 1);
            // "[%]" is the way to write a wildcard that is meant as a character; "[]" is nothing.
            if (set.size() == 1)
                addLiteral(set[0]);
            else if (set.startsWith(u'!'))
                tokens_.push_back({Token::NotSet, rangesOf(set.mid(1))});
            else if (!set.isEmpty())
                tokens_.push_back({Token::Set, rangesOf(set)});
            i = end;
        } else {
            addLiteral(source[i]);
        }
    }

    const bool isOpenBothSides =
        !tokens_.empty() && tokens_.front().kind == Token::Any && tokens_.back().kind == Token::Any;
    if (isOpenBothSides && tokens_.size() == 1) {
        isSubstring_ = true;
    } else if (isOpenBothSides && tokens_.size() == 3 && tokens_[1].kind == Token::Literal) {
        isSubstring_ = true;
        literal_ = tokens_[1].characters;
    }
}

bool LikePattern::matches(QStringView text) const
{
    const QString subject = folded(text);
    if (isSubstring_)
        return subject.contains(literal_);

    // How many characters the token takes at the position; -1 where it does not fit.
    const auto taken = [&subject](const Token& token, qsizetype position) -> qsizetype {
        if (token.kind == Token::Literal) {
            const QStringView rest = QStringView(subject).mid(position);
            return rest.startsWith(token.characters) ? token.characters.size() : -1;
        }
        if (position >= subject.size())
            return -1;
        if (token.kind == Token::One)
            return 1;
        const bool isIn = isInRanges(subject[position], token.characters);
        return isIn == (token.kind == Token::Set) ? 1 : -1;
    };

    // Only the last "%" needs to be tried again with a longer run.
    constexpr std::size_t NoRun = static_cast<std::size_t>(-1);
    std::size_t token = 0;
    qsizetype position = 0;
    std::size_t runToken = NoRun;
    qsizetype runPosition = 0;
    while (token < tokens_.size() || position < subject.size()) {
        if (token < tokens_.size() && tokens_[token].kind == Token::Any) {
            runToken = token++;
            runPosition = position;
            continue;
        }
        const qsizetype count = token < tokens_.size() ? taken(tokens_[token], position) : -1;
        if (count >= 0) {
            position += count;
            ++token;
        } else if (runToken != NoRun && runPosition < subject.size()) {
            token = runToken + 1;
            position = ++runPosition;
        } else {
            return false;
        }
    }
    return true;
}
