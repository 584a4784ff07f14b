#include "service/prices/column_names.hpp"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string>
#include <unordered_map>

#include "service/tables/plain_name.hpp"
#include "service/text/text.hpp"

namespace quintara::quotes {
namespace {

// Names of one use, bars between them, in the order of languages: English, German, French, Spanish,
// Portuguese, Italian, Dutch, Swedish, Norwegian and Danish, Finnish, Polish, Czech and Slovak,
// Hungarian, Romanian, Turkish, Greek, Russian, Ukrainian, Bulgarian, Japanese, Chinese, Korean,
// Arabic, Hebrew, Vietnamese, Indonesian, Thai. Accents, case and signs do not count.
struct Names {
  Use use;
  int rank;
  std::string_view names;
};

constexpr std::array kNames{
    Names{Use::Date, 0,
          "Date|Day|Trade Date|Trading Date|Trading Day|Trade Day|Business Date|Session|"
          "Session Date|Quote Date|Price Date|Pricing Date|Dt|Dte|YYYYMMDD|Datetime|Date "
          "Time|Tradedate|Tradedatetime|Date "
          "and Time|"
          "DTYYYYMMDD|Dates|Datum|Tag|Handelstag|Börsentag|Handelsdatum|Kursdatum|Datum Zeit|"
          "Datum Uhrzeit|Date de séance|Séance|Jour|Date de cotation|Date et heure|Fecha|Día|"
          "Fecha Hora|Fecha de negociación|Data|Dia|Data do pregão|Data pregão|Data Hora|Giorno|"
          "Data di negoziazione|Data Ora|Data e ora|Dag|Handelsdag|Handelsdatum|Dato|Päivä|"
          "Päivämäärä|Pvm|Kaupankäyntipäivä|Data sesji|Dzień|Datum obchodu|Den|Dátum|Nap|"
          "Kereskedési nap|Data tranzacției|Ziua|Tarih|Gün|Tarih Saat|Ημερομηνία|Ημ/νία|Дата|День|"
          "Дата торгов|Дата торгів|Дата и время|День торгів|日付|日付け|日時|年月日|取引日|営業日|"
          "日期|交易日期|交易日|日期时间|日期時間|日|날짜|일자|일시|거래일|거래일자|영업일|التاريخ|"
          "تاريخ|اليوم|תאריך|תאריך מסחר|Ngày|Ngày giao dịch|Tanggal|Tgl|Hari|วันที่|วัน"},
    Names{Use::Date, 1, "Timestamp|Time Stamp|Date GMT|Zeitstempel|Horodatage|时间戳|時間戳"},
    Names{
        Use::Date, 2,
        "Open Time|Begin|Unix|Unix Timestamp|Unix Time|Unixtime|Epoch|Epoch Time|Start|Start Time|"
        "Time Open|Bar Time|Time Period Start|Period Start|Bucket|Candle Time|Index|T"},
    Names{Use::Date, 3, "Close Time|End|End Time|Time Close|Time Period End"},
    Names{Use::Time, 0,
          "Time|Tradetime|Hour|Trade Time|Hh "
          "Mm|Hhmm|Hhmmss|Zeit|Uhrzeit|Heure|Hora|Horário|Ora|Orario|Tijd|"
          "Tijdstip|Tid|Klockslag|Klokkeslett|Klokkeslæt|Aika|Kello|Kellonaika|Czas|Godzina|Čas|"
          "Idő|Időpont|Saat|Ώρα|Время|Час|時刻|時間|时间|時间|交易时间|시간|시각|체결시간|الوقت|"
          "שעה|Giờ|Thời gian|Waktu|Jam|เวลา"},
    Names{Use::Open, 0,
          "Open|O|Openprice|Opening|Eröffn|Eroeffn|Opening Price|Op|Opn|First|Day Open|Start "
          "Price|Open "
          "Last|Eröffnung|"
          "Eroeffnung|Eröffnungskurs|Eroeffnungskurs|Eröffnungspreis|Erster|Erster Kurs|Anfang|"
          "Anfangskurs|Erst|Ouverture|Ouv|Ouvert|Cours d'ouverture|Premier|Premier cours|Prix "
          "d'ouverture|"
          "Apertura|Aper|Apert|Precio de apertura|Abierto|Abertura|Abert|Preço de abertura|"
          "Preço abertura|Primo|Prezzo di apertura|Prezzo apertura|Openingskoers|Openings|Opening "
          "koers|"
          "Openen|Beginkoers|Öppning|Öppen|Öppningskurs|Öppningspris|Öpp|Först|Åpning|"
          "Åpningskurs|Åpen|Åbning|Åbningskurs|Åben|Avaus|Avauskurssi|Avaushinta|Otwarcie|Otw|"
          "Kurs otwarcia|Cena otwarcia|Otevření|Otevírací|Otevírací cena|Otvorenie|Otváracia cena|"
          "Zahájení|Nyitó|Nyitás|Nyitóár|Nyit|Deschidere|Preț deschidere|Açılış|Açılış Fiyatı|"
          "Άνοιγμα|Τιμή ανοίγματος|Открытие|Откр|Цена открытия|Откp|Відкриття|Відкр|Ціна відкриття|"
          "Отваряне|Начална|始値|寄付|寄値|始まり値|开盘|开盘价|今开|开盘价格|開盤|開盤價|開市價|"
          "開市|시가|오픈|"
          "시작가|الافتتاح|افتتاح|سعر الافتتاح|مفتوح|الفتح|פתיחה|שער פתיחה|מחיר פתיחה|Mở cửa|Mở|"
          "Giá mở cửa|Giá mở|Pembukaan|Buka|Harga pembukaan|Dibuka|เปิด|ราคาเปิด"},
    Names{
        Use::High, 0,
        "High|H|Highprice|Hi|Highest|Max|Maximum|Day High|Highest Price|High "
        "Trade|Hoch|Tageshoch|Höchst|"
        "Hoechst|Höchstkurs|Hoechstkurs|Höchster|Höchster Kurs|Tageshöchst|Tageshöchstkurs|"
        "Höchstpreis|Plus haut|Haut|Le plus haut|Cours le plus haut|+ Haut|Máximo|Máx|Alto|"
        "Precio máximo|Más alto|Máxima|Preço máximo|Massimo|Mass|Prezzo massimo|Il più alto|Hoog|"
        "Hoogste|Hoogste koers|Dag hoog|Dagrecord|Högsta|Högst|Högstakurs|Högsta "
        "kurs|Hög|Dagshögsta|"
        "Høy|Hoy|Høyeste|Høyest|Høyeste kurs|Høj|Hoj|Højeste|Højest|Højeste "
        "kurs|Dagshøyeste|Ylin|Korkein|"
        "Päivän ylin|Ylin kurssi|Ylin "
        "hinta|Najwyższy|Najwyższa|Maks|Maksimum|Maksymalny|Maksymalna|"
        "Kurs maksymalny|Cena maksymalna|Najwyższy kurs|Nejvyšší|Nejvyšší cena|Najvyššia|"
        "Najvyššia cena|Legmagasabb|Magas|Maximális|Maximális ár|Napi max|Max ár|Maxim|Preț maxim|"
        "Yüksek|En yüksek|En Yüksek Fiyat|Gün içi en "
        "yüksek|Υψηλό|Υψηλότερο|Μέγιστο|Μέγιστη|Ανώτατη|"
        "Ανώτερη|Максимум|Макс|Максимальная|Цена максимальная|Максимальная цена|Высокая|Высший|"
        "Наивысшая|Максимальна|Макс ціна|Найвища|Висока|Най-висока|Максимална|高値|最高値|最高|"
        "最高价|最高價|最高价格|最高成交價|고가|최고가|الأعلى|أعلى|أعلى "
        "سعر|مرتفع|عالي|אعلى|גבוה|שער גבוה|"
        "גבוה יומי|שער גבוה יומי|Cao nhất|Cao|Giá cao nhất|Giá cao|Tertinggi|Tinggi|Harga "
        "tertinggi|"
        "สูงสุด|ราคาสูงสุด|สูง"},
    Names{
        Use::Low, 0,
        "Low|L|Lowprice|Lo|Lowest|Min|Minimum|Day Low|Lowest Price|Low Trade|Tief|Tagestief|Tiefst|"
        "Tiefstkurs|Tiefster|Tiefster Kurs|Tagestiefst|Tagestiefstkurs|Tiefstpreis|Niedrig|Plus "
        "bas|"
        "Bas|Le plus bas|Cours le plus bas|+ Bas|Mínimo|Mín|Bajo|Precio mínimo|Más bajo|Mínima|"
        "Preço mínimo|Baixa|Minimo|Prezzo minimo|Il più basso|Laag|Laagste|Laagste koers|Dag laag|"
        "Lägsta|Lägst|Lägstakurs|Lägsta kurs|Låg|Dagslägsta|Lav|Laveste|Lavest|Laveste kurs|"
        "Dagslaveste|Alin|Matalin|Päivän alin|Alin kurssi|Alin hinta|Najniższy|Najniższa|Minimalny|"
        "Minimalna|Kurs minimalny|Cena minimalna|Najniższy kurs|Nejnižší|Nejnižší cena|Najnižšia|"
        "Najnižšia cena|Legalacsonyabb|Alacsony|Minimális|Minimális ár|Napi min|Min ár|Minim|"
        "Preț minim|Düşük|En düşük|En Düşük Fiyat|Gün içi en düşük|Χαμηλό|Χαμηλότερο|Ελάχιστο|"
        "Ελάχιστη|Κατώτατη|Κατώτερη|Минимум|Мин|Минимальная|Цена минимальная|Минимальная цена|"
        "Низкая|Низший|Наименьшая|Мінімум|Мін|Мінімальна|Найнижча|Низька|Най-ниска|Минимална|安値|"
        "最安値|最低|最低价|最低價|最低价格|最低成交價|저가|최저가|الأدنى|أدنى|أدنى "
        "سعر|منخفض|נמוך|שער נמוך|"
        "נמוך יומי|שער נמוך יומי|Thấp nhất|Thấp|Giá thấp nhất|Giá thấp|Terendah|Rendah|"
        "Harga terendah|ต่ำสุด|ราคาต่ำสุด|ต่ำ"},
    Names{
        Use::Close, 0,
        "Close|C|Closeprice|Closing|Closing Price|Cl|Cls|Close Last|Day "
        "Close|Settle|Settlement|Settlement "
        "Price|"
        "Settle Price|Raw Close|Unadjusted Close|Unadj Close|Close Unadjusted|Close Raw|End Price|"
        "Close Close price adjusted for splits|Closeclose price adjusted for splits|Schluss|"
        "Schluß|Schlusskurs|Schlußkurs|Schlusspreis|Schließen|Tagesschluss|Schluss Letzter|Clôture|"
        "Clot|Cours de clôture|Fermeture|Cours de fermeture|Prix de clôture|Clôture Dernier|Cierre|"
        "Precio de cierre|Al cierre|Cerrar|Fechamento|Fech|Fecho|Preço de fechamento|"
        "Preço fechamento|Preço de fecho|Chiusura|Chius|Prezzo di chiusura|Prezzo chiusura|Slot|"
        "Slotkoers|Sluiting|Sluitkoers|Sluitingskoers|Stängning|Stängningskurs|Slutkurs|Stängt|"
        "Slut|"
        "Slutpris|Slutt|Sluttkurs|Lukning|Lukkekurs|Luk|Stengning|Päätös|Päätöskurssi|Päätöshinta|"
        "Sulkeutuminen|Sulkuhinta|Zamknięcie|Zam|Kurs zamknięcia|Cena zamknięcia|Zavření|Závěr|"
        "Závěrečná|Závěrečná cena|Zavírací|Zavírací cena|Uzavření|Uzavírací cena|Zatváracia cena|"
        "Zatvorenie|Záverečná cena|Záró|Zárás|Záróár|Zár|Zárőár|Închidere|Preț închidere|Kapanış|"
        "Kapanış Fiyatı|Κλείσιμο|Τιμή κλεισίματος|Закрытие|Закр|Цена закрытия|Закриття|Закр ціна|"
        "Ціна "
        "закриття|Затваряне|Крайна|終値|終り値|收盘|收盘价|收盘价格|收盤|收盤價|收市|收市價|종가|"
        "마감가|"
        "الإغلاق|إغلاق|اغلاق|سعر الإغلاق|סגירה|שער סגירה|שער נעילה|נעילה|מחיר סגירה|Đóng cửa|Đóng|"
        "Giá đóng cửa|Giá đóng|Penutupan|Tutup|Harga penutupan|Ditutup|ปิด|ราคาปิด"},
    Names{Use::Close, 1, "Close Price Adjusted for Splits|C Price"},
    Names{
        Use::Last, 0,
        "Last|Lastprice|Last Trade|Latest|Latest Price|Last Traded Price|Ltp|Price|Px Last|Letzter|"
        "Letzter Kurs|Letzte|Zuletzt|Kurs|Preis|Dernier|Dernier cours|Cours|Prix|Último|Últ|Precio|"
        "Último precio|Preço|Último preço|Cotação|Ultimo|Prezzo|Ultimo prezzo|Laatste|Laatste "
        "koers|"
        "Koers|Prijs|Senast|Senaste|Senast betalt|Senaste kurs|Kurs|Siste|Siste "
        "kurs|Seneste|Sidste|"
        "Seneste kurs|Sist|Viimeisin|Viimeisin kurssi|Kurssi|Hinta|Ostatnio|Ostatni|Cena|"
        "Kurs ostatni|Poslední|Poslední cena|Posledná|Utolsó|Utolsó ár|Ár|Árfolyam|Ultim|Ultimul|"
        "Preț|Ultimul preț|Son|Şimdi|Son Fiyat|Fiyat|Τελευταία|Τιμή|Цена|Последняя|Посл|"
        "Последняя цена|Ціна|Остання|Последна|現在値|株価|価格|最新价|最新價|现价|價格|价格|현재가|"
        "가격|الأخير|آخر|آخر سعر|السعر|אחרון|שער אחרון|שער|מחיר|Lần cuối|Giá|Giá cuối|Terakhir|"
        "Harga|Harga terakhir|ล่าสุด|ราคาล่าสุด|ราคา"},
    Names{
        Use::Volume, 0,
        "Volume|Vol|V|Vols|Total Volume|Trade Volume|Traded Volume|Share Volume|Day Volume|"
        "Volume Traded|Shares Traded|Shares|Total Traded Quantity|Traded Quantity|Total Trade "
        "Quantity|"
        "Deliverable Volume|Ttl Trd Qnty|Quantity|Qty|No of Shares|Number of Shares|Vol Shares|"
        "Volumen|Stück|Stueck|Stuecke|Stücke|Stücke gehandelt|Gehandelte "
        "Stücke|Anzahl|Handelsvolumen|Quantité|"
        "Volume échangé|Volumes|Nombre de titres|Titres|Vol Títulos|Títulos|Acciones|Cantidad|"
        "Quantidade|Volume negociado|Quantidade negociada|Volumi|Quantità|Vol totale|Aantal|"
        "Volym|Total volym|Antal|Antal aktier|Volum|Antall|Totalt volum|Mængde|Volyymi|Määrä|"
        "Osakkeita|Vaihto kpl|Wolumen|Wol|Objem|Objem obchodů|Počet|Mennyiség|Darab|Forgalom db|"
        "Forgalom darab|Volumul|Hacim Lot|Lot|İşlem Miktarı|Miktar|Όγκος|Όγκος συναλλαγών|Τεμάχια|"
        "Объем|Объём|Объем торгов|Объём "
        "торгов|Количество|Обсяг|Об'єм|Обем|出来高|売買高|成交量|交易量|"
        "成交股数|成交股數|成交數量|总手|거래량|الحجم|حجم|حجم التداول|الكمية|נפח|נפח "
        "מסחר|כמות|Khối lượng|"
        "KL|KLGD|Khối lượng giao dịch|Volume perdagangan|ปริมาณ|ปริมาณการซื้อขาย|จำนวน"},
    Names{Use::Volume, 1,
          "Tick Volume|Tickvol|Tick Vol|Real Volume|Vol Base|Base Volume|Umsatz|Forgalom|Hacim|"
          "Volumefrom|Volume From|Base Asset Volume|Umsatz Stück|Volumen Títulos|Volume "
          "Totale|Vaihto|"
          "מחזור|Size|Trade Size"},
    Names{Use::Ticker, 0,
          "Ticker|Symbol|Ticker Symbol|Stock Symbol|Sym|Trading Symbol|Symbole|Símbolo|Simbolo|"
          "Symbool|Symboli|Szimbólum|Simbol|Sembol|Σύμβολο|Тикер|Тікер|Символ|Kürzel|Tickersymbol|"
          "Tic|Secid|Scrip|Papel|Ativo|Walor"},
};

// Words beside the one that counts.
constexpr std::string_view kAround =
    "price|prices|px|rate|the|day|daily|days|today|in|of|s|utc|gmt|est|edt|cet|cest|eet|msk|ist|"
    "jst|hkt|local|"
    "exchange|shares|lots|contracts|units|qty|pcs|stk|st|szt|ks|db|mln|cours|prix|kurs|koers|preis|"
    "precio|preco|"
    "prezzo|cena|pris|hinta|ar|fiyat|цена|ціна|값|usd|eur|gbp|gbx|jpy|chf|cad|aud|nzd|sek|nok|dkk|"
    "pln|czk|huf|ron|try|tl|rub|uah|inr|rs|cny|rmb|hkd|twd|krw|sgd|thb|idr|vnd|myr|php|zar|brl|r|"
    "mxn|clp|cop|ars|ils|nis|aed|sar|egp|usdt|usdc|busd|btc|eth|pln|zl|kr|kc|ft|us|円|元|원|в|руб";

// Words that say whose prices they are.
struct SideWords {
  Side side;
  std::string_view words;
};
constexpr std::array kSideWords{
    SideWords{Side::Middle, "mid"},
    SideWords{Side::Bid, "bid"},
    SideWords{Side::Ask, "ask|offer"},
    SideWords{Side::Adjusted,
              "adj|adjusted|bereinigt|bereinigter|ajuste|ajustee|ajustado|ajustada|ajust|aj|"
              "rettificato|rettificata|aggiustato|justerad|justert|justeret|aangepast|aangepaste|"
              "duzeltilmis|скорр"},
};
// Those of languages that write such words together with the other.
constexpr std::string_view kAdjustedCloses =
    "AdjClose|Adj close Adjusted close|調整後終値|调整后收盘价|수정종가|수정주가";

template <class Each>
void forEachPart(std::string_view text, char separator, Each each) {
  while (!text.empty()) {
    const auto end = std::min(text.find(separator), text.size());
    each(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

using Dictionary = std::unordered_map<std::string, NamedUse>;

const Dictionary& dictionary() {
  static const Dictionary known = [] {
    Dictionary result;
    for (const Names& row : kNames) {
      forEachPart(row.names, '|', [&](std::string_view name) {
        result.try_emplace(plainName(name), NamedUse{row.use, Side::Plain, row.rank});
      });
    }
    forEachPart(kAdjustedCloses, '|', [&](std::string_view name) {
      result.try_emplace(plainName(name), NamedUse{Use::Close, Side::Adjusted, 0});
    });
    result.try_emplace("adjclose", NamedUse{Use::Close, Side::Adjusted, 0});
    return result;
  }();
  return known;
}

const std::set<std::string, std::less<>>& wordsAround() {
  static const auto words = [] {
    std::set<std::string, std::less<>> result;
    forEachPart(kAround, '|', [&](std::string_view word) { result.insert(plainName(word)); });
    return result;
  }();
  return words;
}

const std::map<std::string, Side, std::less<>>& wordsOfSides() {
  static const auto words = [] {
    std::map<std::string, Side, std::less<>> result;
    for (const SideWords& row : kSideWords) {
      forEachPart(row.words, '|',
                  [&](std::string_view word) { result.emplace(plainName(word), row.side); });
    }
    return result;
  }();
  return words;
}

bool isNumber(std::string_view word) { return std::all_of(word.begin(), word.end(), isDigit); }

std::optional<NamedUse> known(const std::string& plain) {
  const auto found = dictionary().find(plain);
  return found != dictionary().end() ? std::optional(found->second) : std::nullopt;
}

std::string joined(const std::string& one, std::string_view word) {
  return one.empty() ? std::string(word) : one + " " + std::string(word);
}

}  // namespace

std::string_view nameOf(Use use) {
  constexpr std::array<std::string_view, kUses> kEnglish{"Date",  "Time",  "Open",   "High",  "Low",
                                                         "Close", "Close", "Volume", "Ticker"};
  return kEnglish.at(static_cast<std::size_t>(use));
}

std::optional<NamedUse> useOf(std::string_view name, std::string_view ticker) {
  const std::string plain = plainName(name);
  if (const auto use = known(plain)) {
    return use;
  }
  const std::string prefix = plainName(ticker) + " ";
  std::string_view rest = plain;
  rest.remove_prefix(prefix.size() > 1 && rest.substr(0, prefix.size()) == prefix ? prefix.size()
                                                                                  : 0);
  Side side = Side::Plain;
  std::string whole;    // without the words that say a side
  std::string reduced;  // without words around it as well
  forEachPart(rest, ' ', [&](std::string_view word) {
    const auto saidSide = wordsOfSides().find(word);
    if (saidSide != wordsOfSides().end()) {
      side = saidSide->second;
      return;
    }
    whole = joined(whole, word);
    if (wordsAround().count(word) == 0 && !isNumber(word)) {
      reduced = joined(reduced, word);
    }
  });
  auto use = known(whole);
  if (!use) {
    use = known(reduced);
  }
  if (use) {
    use->side = side;
  }
  return use;
}

}  // namespace quintara::quotes
