#include "core/data_paths.h"

namespace vt {

namespace {

QString lessonScript(const QString& root, int lesson, const char* name) {
    return LessonScriptFolder(root, lesson) + QLatin1String(name);
}

} // namespace

QString DataFolderRoot(const QString& folder) {
    if (folder.isEmpty() || folder.endsWith(u'/') || folder.endsWith(u'\\')) return folder;
    return folder + u'/';
}

QString TitleFile(const QString& root) {
    return root + QStringLiteral("Lessons/Title.zvk");
}

QString LessonScriptFolder(const QString& root, int lesson) {
    return root + QStringLiteral("Lessons/Script/Lesson_%1/").arg(lesson);
}

QString LessonWordsFile(const QString& root, int lesson) {
    return lessonScript(root, lesson, "icwp.zvk");
}

QString LessonTextFile(const QString& root, int lesson) {
    return lessonScript(root, lesson, "lifr.zvk");
}

QString LessonQuestionsFile(const QString& root, int lesson) {
    return lessonScript(root, lesson, "ogae.zvk");
}

QString PlayLinePositionsFile(const QString& root, int lesson) {
    return lessonScript(root, lesson, "yeap.zvk");
}

QString VocabularyFile(const QString& root, int n) {
    return root + QStringLiteral("Vocabulary/ci%1.zvk").arg(n);
}

QString DialogScriptFile(const QString& root) {
    return root + QStringLiteral("Spoken/Script.zvk");
}

QString SentenceCategoryFile(const QString& root, int category) {
    return root + QStringLiteral("Spoken/Script_%1.zvk").arg(category);
}

QString SpokenSentenceFile(const QString& root, int n) {
    return root + QStringLiteral("Spoken/Script%1.zvk").arg(n);
}

QString LessonSoundFolder(const QString& root, int lesson) {
    return root + QStringLiteral("Lessons/Sound/Lesson_%1/").arg(lesson);
}

QString SentenceSoundFile(const QString& root, int lesson, int sentence) {
    return LessonSoundFolder(root, lesson) + QStringLiteral("%1.wav").arg(sentence);
}

QString PlayTrackFile(const QString& root, int lesson) {
    return root + QStringLiteral("Lessons/Sound/%1.mp3").arg(lesson);
}

QString PlayPictureFile(const QString& root, int lesson, int picture) {
    return root + QStringLiteral("Lessons/Picture/Lesson_%1/%2.jpg").arg(lesson).arg(picture);
}

QString SyllableSoundFolder(const QString& root) {
    return root + QStringLiteral("Phonetic Symbols/");
}

QString SyllableSoundFile(const QString& root, const QString& syllable) {
    return SyllableSoundFolder(root) + syllable.left(1).toUpper() + u'/' + syllable +
           QStringLiteral(".wav");
}

bool IsSyllableSoundPath(const QString& path) {
    return path.contains(QStringLiteral("Symbols/"), Qt::CaseInsensitive) ||
           path.contains(QStringLiteral("Symbols\\"), Qt::CaseInsensitive);
}

QString NumberSoundFile(const QString& root, const QString& symbol) {
    return root + QStringLiteral("Numbers/") + symbol + QStringLiteral(".wav");
}

QString CardinalNumbersFile(const QString& root) {
    return root + QStringLiteral("Numbers/cardinal.txt");
}

QString TelephoneNumbersFile(const QString& root) {
    return root + QStringLiteral("Numbers/telephone.txt");
}

QString DialogSoundFile(const QString& root, const QString& fileName) {
    return root + QStringLiteral("Spoken/Sound/") + fileName;
}

QString FarewellSoundFile(const QString& root) {
    return DialogSoundFile(root, QStringLiteral("b.wav"));
}

QString VerdictName(Verdict verdict) {
    switch (verdict) {
    case Verdict::Right:
        return QStringLiteral("right");
    case Verdict::Wrong:
        return QStringLiteral("wrong");
    case Verdict::Careful:
        return QStringLiteral("careful");
    case Verdict::CarryOn:
        break;
    }
    return QStringLiteral("carryon");
}

QString VerdictSoundFile(const QString& root, Verdict verdict) {
    return root + QStringLiteral("Sound/") + VerdictName(verdict) + QStringLiteral(".WAV");
}

QString StrokeFile(const QString& root, int n) {
    return root + QStringLiteral("Characters/%1.zvk").arg(n);
}

QString SubstitutionTableFolder(const QString& root) {
    return root + QStringLiteral("Tables/");
}

QString StudyFile(const QString& root) {
    return root + QStringLiteral("Study.zvk");
}

QString SettingFile(const QString& root) {
    return root + QStringLiteral("Setting.zvk");
}

QString TranslationNotesFile(const QString& root, int lesson) {
    return root + QStringLiteral("Translation_%1.txt").arg(lesson);
}

QString ChatHistoryFile(const QString& root) {
    return root + QStringLiteral("Chat.txt");
}

} // namespace vt
