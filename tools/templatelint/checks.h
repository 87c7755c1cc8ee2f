#pragma once

namespace templatelint {

class Analysis;
class BbCode;
class Report;

// One check for each row of the table of rules; each looks at the whole template.
void checkUnknownAttributes(const Analysis &analysis, Report &report);
void checkExpressions(const Analysis &analysis, Report &report);
void checkCutExpressions(const Analysis &analysis, Report &report);
void checkDivisions(const Analysis &analysis, Report &report);
void checkLostSigns(const Analysis &analysis, Report &report);
void checkTextsAsNumbers(const Analysis &analysis, Report &report);
void checkChangedFigures(const Analysis &analysis, Report &report);
void checkDoubleSigns(const Analysis &analysis, Report &report);
void checkSums(const Analysis &analysis, Report &report);
void checkMarkupInValues(const Analysis &analysis, Report &report);
void checkValueFormats(const Analysis &analysis, Report &report);
void checkDateLetters(const Analysis &analysis, Report &report);
void checkCommasInFormats(const Analysis &analysis, Report &report);
void checkGuessedNames(const Analysis &analysis, Report &report);
void checkShortTags(const Analysis &analysis, Report &report);
void checkMarkupSpelling(const Analysis &analysis, Report &report);
void checkUnterminatedTags(const Analysis &analysis, Report &report);
void checkBrackets(const Analysis &analysis, Report &report);
void checkHiddenTags(const Analysis &analysis, Report &report);
void checkAlignmentWithTab(const Analysis &analysis, Report &report);
void checkRepeatedTabs(const Analysis &analysis, Report &report);
void checkSecondAlignment(const Analysis &analysis, Report &report);
void checkLineSpacing(const Analysis &analysis, Report &report);
void checkOpenFormats(const Analysis &analysis, Report &report);
void checkTagsBehindTheirPair(const Analysis &analysis, Report &report);
void checkOpenFonts(const Analysis &analysis, Report &report);
void checkLostFontSwitches(const Analysis &analysis, Report &report);
void checkUnknownFonts(const Analysis &analysis, Report &report);
void checkLostMarkup(const Analysis &analysis, Report &report);
void checkRemovals(const Analysis &analysis, Report &report);
void checkEntries(const Analysis &analysis, Report &report);
void checkShiftedCuts(const Analysis &analysis, Report &report);
void checkCopyMark(const Analysis &analysis, Report &report);
void checkRepeatedSymbolFiles(const Analysis &analysis, Report &report);
void checkMissingSymbolFile(const Analysis &analysis, Report &report);
void checkDamagedSymbolFile(const Analysis &analysis, Report &report);
void checkFiscalMarkers(const Analysis &analysis, Report &report);
void checkQrMarkup(const Analysis &analysis, Report &report);
void checkQrInText(const Analysis &analysis, Report &report);
void checkLineWidth(const Analysis &analysis, Report &report);
void checkBrokenWords(const Analysis &analysis, Report &report);
void checkSymbolDrawings(const Analysis &analysis, Report &report);
void checkCharacters(const Analysis &analysis, Report &report);
void checkEndlessValues(const Analysis &analysis, Report &report);
void checkCodes(const Analysis &analysis, Report &report);
void checkBbTagsInTemplate(const Analysis &analysis, Report &report);

// The same for texts in BBCode.
void checkBbMarkupInValues(const BbCode &text, Report &report);
void checkBbNames(const BbCode &text, Report &report);
void checkBbMalformed(const BbCode &text, Report &report);
void checkBbLonely(const BbCode &text, Report &report);
void checkBbCrossed(const BbCode &text, Report &report);
void checkBbPictures(const BbCode &text, Report &report);
void checkBbAmbiguousPictures(const BbCode &text, Report &report);
void checkBbCodes(const BbCode &text, Report &report);
void checkBbLargeText(const BbCode &text, Report &report);
void checkBbNumbers(const BbCode &text, Report &report);
void checkBbFields(const BbCode &text, Report &report);
void checkBbCopyMark(const BbCode &text, Report &report);
void checkBbDoubleSigns(const BbCode &text, Report &report);
void checkBbLineWidth(const BbCode &text, Report &report);
void checkBbBrokenWords(const BbCode &text, Report &report);
void checkBbCharacters(const BbCode &text, Report &report);

}  // namespace templatelint
