#include "service/prices/date_words.hpp"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string>

#include "service/tables/plain_name.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

// A line for a language, January first. Where a name changes with its case both stand.
constexpr auto kMonths = std::to_array<std::string_view>({
    "January February March April May June July August September October November December",
    "Jan Feb Mar Apr May Jun Jul Aug Sept Oct Nov Dec",
    "Januar Februar März April Mai Juni Juli August September Oktober November Dezember",
    "Jänner Feber Mrz Apr Mai Jun Jul Aug Sep Okt Nov Dez",
    "janvier février mars avril mai juin juillet août septembre octobre novembre décembre",
    "jan fev mars avr mai juin juil aout sept oct nov dec",
    "enero febrero marzo abril mayo junio julio agosto septiembre octubre noviembre diciembre",
    "ene feb mar abr may jun jul ago setiembre oct nov dic",
    "janeiro fevereiro março abril maio junho julho agosto setembro outubro novembro dezembro",
    "gennaio febbraio marzo aprile maggio giugno luglio agosto settembre ottobre novembre dicembre",
    "januari februari maart april mei juni juli augustus september oktober november december",
    "januari februari mrt april maj juni juli augusti september oktober november december",
    "januar februar marts april mai juni juli august september oktober november desember",
    "tammikuu helmikuu maaliskuu huhtikuu toukokuu kesäkuu heinäkuu elokuu syyskuu lokakuu "
    "marraskuu joulukuu",
    "tammikuuta helmikuuta maaliskuuta huhtikuuta toukokuuta kesäkuuta heinäkuuta elokuuta "
    "syyskuuta lokakuuta marraskuuta joulukuuta",
    "styczeń luty marzec kwiecień maj czerwiec lipiec sierpień wrzesień październik listopad "
    "grudzień",
    "stycznia lutego marca kwietnia maja czerwca lipca sierpnia września października listopada "
    "grudnia",
    "leden únor březen duben květen červen červenec srpen září říjen listopad prosinec",
    "ledna února března dubna května června července srpna září října listopadu prosince",
    "január február március április május június július augusztus szeptember október november "
    "december",
    "ianuarie februarie martie aprilie mai iunie iulie august septembrie octombrie noiembrie "
    "decembrie",
    "Ocak Şubat Mart Nisan Mayıs Haziran Temmuz Ağustos Eylül Ekim Kasım Aralık",
    "Ιανουάριος Φεβρουάριος Μάρτιος Απρίλιος Μάιος Ιούνιος Ιούλιος Αύγουστος Σεπτέμβριος "
    "Οκτώβριος Νοέμβριος Δεκέμβριος",
    "Ιανουαρίου Φεβρουαρίου Μαρτίου Απριλίου Μαΐου Ιουνίου Ιουλίου Αυγούστου Σεπτεμβρίου "
    "Οκτωβρίου Νοεμβρίου Δεκεμβρίου",
    "январь февраль март апрель май июнь июль август сентябрь октябрь ноябрь декабрь",
    "января февраля марта апреля мая июня июля августа сентября октября ноября декабря",
    "січня лютого березня квітня травня червня липня серпня вересня жовтня листопада грудня",
    "يناير فبراير مارس أبريل مايو يونيو يوليو أغسطس سبتمبر أكتوبر نوفمبر ديسمبر",
    "Januari Februari Maret April Mei Juni Juli Agustus September Oktober November Desember",
});

constexpr std::string_view kDays =
    "Monday Tuesday Wednesday Thursday Friday Saturday Sunday Montag Dienstag Mittwoch Donnerstag "
    "Freitag Samstag Sonnabend Sonntag lundi mardi mercredi jeudi vendredi samedi dimanche lunes "
    "martes miércoles jueves viernes sábado domingo segunda terça quarta quinta sexta feira lunedì "
    "martedì mercoledì giovedì venerdì sabato domenica maandag dinsdag woensdag donderdag vrijdag "
    "zaterdag zondag måndag tisdag onsdag torsdag fredag lördag söndag mandag tirsdag lørdag "
    "søndag "
    "maanantai tiistai keskiviikko torstai perjantai lauantai sunnuntai poniedziałek wtorek środa "
    "czwartek piątek sobota niedziela pondělí úterý středa čtvrtek pátek neděle hétfő kedd szerda "
    "csütörtök péntek szombat vasárnap luni marți miercuri joi vineri sâmbătă duminică Pazartesi "
    "Salı Çarşamba Perşembe Cuma Cumartesi Pazar Δευτέρα Τρίτη Τετάρτη Πέμπτη Παρασκευή Σάββατο "
    "Κυριακή понедельник вторник среда четверг пятница суббота воскресенье пн вт ср чт пт сб вс "
    "понеділок вівторок середа четвер пʼятниця субота неділя Senin Selasa Rabu Kamis Jumat Sabtu "
    "Minggu الاثنين الثلاثاء الأربعاء الخميس الجمعة السبت الأحد";

// Those of one sign, which would be too short to be cut.
constexpr std::string_view kShortDays =
    "月 火 水 木 金 土 日 月曜日 火曜日 水曜日 木曜日 金曜日 土曜日 日曜日 星期一 星期二 星期三 "
    "星期四 "
    "星期五 星期六 星期日 星期天 周一 周二 周三 周四 周五 周六 周日 週一 週二 週三 週四 週五 월 화 "
    "수 목 "
    "금 토 일 월요일 화요일 수요일 목요일 금요일 토요일 일요일";

constexpr std::string_view kFillers =
    "st nd rd th de del den der dem d of the le la г г. года року р a 年 月 日 号 年. 년 월 일 yil "
    "kl om at "
    "à um klo og i";

constexpr std::string_view kBeforeNoon = "am a vorm 上午 午前 오전 πμ öö ص de";
constexpr std::string_view kAfterNoon = "pm p nachm 下午 午後 오후 μμ ös م du";

template <class Each>
void forEachWord(std::string_view words, Each each) {
  while (!words.empty()) {
    const auto end = std::min(words.find(' '), words.size());
    each(plainName(lowerCase(words.substr(0, end))));
    words.remove_prefix(std::min(end + 1, words.size()));
  }
}

using Words = std::set<std::string, std::less<>>;

Words wordsOf(std::string_view words) {
  Words result;
  forEachWord(words, [&](const std::string& word) { result.insert(word); });
  return result;
}

// Calls for every beginning of a word that has so many letters, which may be of several bytes.
template <class Each>
void forEachBeginning(const std::string& word, std::size_t letters, Each each) {
  std::size_t count = 0;
  for (std::size_t i = 0; i <= word.size(); ++i) {
    const bool letterStarts = (static_cast<unsigned char>(word[i]) & 0xC0U) != 0x80U;
    if (letterStarts && count++ >= letters) {
      each(word.substr(0, i));
    }
  }
}

using Months = std::map<std::string, int, std::less<>>;

// English goes before the others; of the others a beginning that may be two months is none.
Months monthsOfAll() {
  Months english;
  Months others;
  for (std::size_t row = 0; row < kMonths.size(); ++row) {
    int month = 0;
    forEachWord(kMonths.at(row), [&](const std::string& word) {
      ++month;
      forEachBeginning(word, 3, [&](const std::string& beginning) {
        if (row < 2) {
          english.emplace(beginning, month);
          return;
        }
        const auto [known, added] = others.emplace(beginning, month);
        known->second = added || known->second == month ? month : 0;
      });
    });
  }
  // A name in full is no beginning of another one.
  for (const auto row : kMonths) {
    int month = 0;
    forEachWord(row, [&](const std::string& word) { others[word] = ++month; });
  }
  english.merge(others);
  return english;
}

// In lower case first: small and large letters part no words here.
std::string plainWord(std::string_view word) { return plainName(lowerCase(word)); }

}  // namespace

int monthNamed(std::string_view word) {
  static const Months months = monthsOfAll();
  const auto found = months.find(plainWord(word));
  return found != months.end() ? found->second : 0;
}

bool isDayOfWeek(std::string_view word) {
  static const Words days = [] {
    Words result = wordsOf(kShortDays);
    forEachWord(kDays, [&](const std::string& day) {
      forEachBeginning(day, 2, [&](const std::string& beginning) { result.insert(beginning); });
    });
    return result;
  }();
  return days.count(plainWord(word)) > 0;
}

bool isFiller(std::string_view word) {
  static const Words fillers = wordsOf(kFillers);
  return fillers.count(plainWord(word)) > 0;
}

char halfOfDay(std::string_view word) {
  static const Words before = wordsOf(kBeforeNoon);
  static const Words after = wordsOf(kAfterNoon);
  const std::string plain = plainWord(word);
  return before.count(plain) > 0 ? 'a' : after.count(plain) > 0 ? 'p' : '\0';
}

}  // namespace quintara::quotes
