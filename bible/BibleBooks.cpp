#include "bible/VXBible.h"

const wchar_t BIBLEBOOKS[BIBLE_BOOK_COUNT][BIBLE_BOOK_NAME_SIZE] = {
    L"Genesis", L"Exodus", L"Leviticus", L"Numbers", L"Deuteronomy", L"Joshua", L"Judges", L"Ruth", L"1 Samuel",
    L"2 Samuel", L"1 Kings", L"2 Kings", L"1 Chronicles", L"2 Chronicles", L"Ezra", L"Nehemiah", L"Esther", L"Job",
    L"Psalms", L"Proverbs", L"Ecclesiastes", L"Song of Songs", L"Isaiah", L"Jeremiah", L"Lamentations", L"Ezekiel",
    L"Daniel", L"Hosea", L"Joel", L"Amos", L"Obadiah", L"Jonah", L"Micah", L"Nahum", L"Habakkuk", L"Zephaniah",
    L"Haggai", L"Zechariah", L"Malachi", L"Matthew", L"Mark", L"Luke", L"John", L"Acts", L"Romans",
    L"1 Corinthians", L"2 Corinthians", L"Galatians", L"Ephesians", L"Philippians", L"Colossians",
    L"1 Thessalonians", L"2 Thessalonians", L"1 Timothy", L"2 Timothy", L"Titus", L"Philemon", L"Hebrews", L"James",
    L"1 Peter", L"2 Peter", L"1 John", L"2 John", L"3 John", L"Jude", L"Revelation",
};
