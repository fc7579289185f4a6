// The table of the columns' names.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/csv_column_names.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <unordered_map>

namespace quelm {
namespace {

struct KnownColumns {
    CsvField field;
    Use use;
    const char* names; ///< parted by "|"
};

// Our own names stand first. The others are those of widespread address books, in the languages that they
// export in, and what people write into lists of their own.
constexpr std::array knownColumns{
    KnownColumns{
        CsvField::name, Use::unmarked,
        "name|full name|display name|file as|contact|contact name|recipient|recipient name|"
        "vollständiger name|anzeigename|ansprechpartner|empfänger|kontakt|kontaktname|"
        "nom complet|nom affiché|nom à afficher|destinataire|nombre completo|nombre para mostrar|"
        "destinatario|nome completo|nome visualizzato|nome para exibição|destinatário|"
        "volledige naam|naam|weergavenaam|imię i nazwisko|nazwa wyświetlana|полное имя|имя и фамилия|"
        "получатель|氏名|名前|表示名|姓名|显示名称|이름"},
    KnownColumns{
        CsvField::givenName, Use::unmarked,
        "first name|given name|firstname|vorname|prénom|nombre|nombre de pila|primer nombre|nome|"
        "nome próprio|primeiro nome|voornaam|imię|имя|名|förnamn|fornavn|etunimi|jméno|křestní jméno|"
        "keresztnév|ad|adı"},
    KnownColumns{
        CsvField::middleName, Use::unmarked,
        "middle name|additional name|weitere vornamen|zweiter vorname|deuxième prénom|segundo nombre|"
        "secondo nome|nome do meio|segundo nome|tussenvoegsel|middelste naam|drugie imię|отчество"},
    KnownColumns{
        CsvField::familyName, Use::unmarked,
        "last name|family name|surname|lastname|nachname|familienname|zuname|nom|nom de famille|"
        "apellido|apellidos|primer apellido|cognome|sobrenome|apelido|achternaam|nazwisko|фамилия|姓|"
        "efternamn|efternavn|etternavn|sukunimi|příjmení|vezetéknév|soyadı|soyad"},
    KnownColumns{CsvField::organization, Use::unmarked,
                 "organization|organisation|organization name|organization 1 name|company|company name|"
                 "firma|firmenname|unternehmen|société|entreprise|organización|empresa|compañía|"
                 "organización 1 nombre|società|azienda|organizzazione|organização|bedrijf|organisatie|"
                 "organizacja|firma przedsiębiorstwo|организация|компания|会社|会社名|公司|单位|회사|företag|"
                 "firmanavn|yritys|společnost|cég|şirket"},
    KnownColumns{CsvField::fax, Use::work,
                 "business fax|work fax|fax business|fax work|business fax number|company fax|office fax|"
                 "fax geschäftlich|geschäftliches fax|fax dienstlich|faxnummer geschäftlich|fax arbeit|"
                 "fax büro|fax firma|firmenfax|fax professionnel|télécopie bureau|télécopie "
                 "professionnelle|fax bureau|"
                 "fax del trabajo|fax trabajo|fax oficina|fax uff|fax ufficio|fax lavoro|fax comercial|"
                 "fax do trabalho|fax op werk|fax werk|zakelijk faxnummer|faks służbowy|faks firmowy|"
                 "рабочий факс|勤務先ファックス|会社fax|商务传真|单位传真|회사팩스|근무처팩스"},
    KnownColumns{CsvField::fax, Use::home,
                 "home fax|fax home|private fax|fax privat|privates fax|faxnummer privat|télécopie domicile|"
                 "fax domicile|fax personnel|fax particular|fax casa|fax personal|fax abitazione|fax thuis|"
                 "faks domowy|домашний факс|自宅ファックス|自宅fax|住宅传真|집팩스"},
    KnownColumns{
        CsvField::fax, Use::unmarked,
        "number|fax|fax number|faxnumber|fax no|fax nr|fax phone|primary fax|other fax|"
        "facsimile|facsimile number|faxnummer|fax nummer|telefax|telefaxnummer|weiteres fax|"
        "anderes fax|télécopie|télécopieur|numéro de fax|numéro de télécopie|autre télécopie|"
        "número de fax|otro fax|numero di fax|numero fax|altro fax|outro fax|nr faxu|faks|"
        "numer faksu|inny faks|факс|номер факса|ファックス|ファックス番号|fax番号|传真|传真号码|傳真|팩스|"
        "팩스번호|faxnr|telefaks|faksi|faks numarası"},
    KnownColumns{CsvField::phone, Use::work,
                 "business phone|work phone|office phone|business phone 2|telefon geschäftlich|"
                 "telefon dienstlich|tel dienstlich|geschäftliches telefon|telefon geschäftlich 2|"
                 "téléphone bureau|téléphone professionnel|tél bureau|tél professionnel|teléfono del trabajo|"
                 "teléfono trabajo|ufficio|telefono ufficio|telefono uff|telefono lavoro|telefone comercial|"
                 "telefone do trabalho|telefoon op werk|telefoon werk|telefon służbowy|рабочий телефон|"
                 "勤務先電話|商务电话"},
    KnownColumns{CsvField::phone, Use::home,
                 "home phone|home phone 2|telefon privat|tel privat|privates telefon|telefon privat 2|"
                 "téléphone domicile|téléphone personnel|tél personnel|particular|teléfono particular|"
                 "teléfono casa|abitazione|telefono abitazione|telefone residencial|telefoon thuis|"
                 "telefon domowy|домашний телефон|自宅電話|住宅电话"},
    KnownColumns{CsvField::phone, Use::unmarked,
                 "phone|phone number|telephone|telephone number|primary phone|mobile phone|mobile number|"
                 "mobile|cell phone|other phone|telefon|telefonnummer|tel|rufnummer|mobiltelefon|"
                 "mobil tel nr|mobil|handy|mobilnummer|weiteres telefon|téléphone|numéro de téléphone|"
                 "tél mobile|portable|teléfono|móvil|teléfono móvil|telefono|cellulare|telefone|celular|"
                 "telemóvel|telefoon|telefoonnummer|mobiele telefoon|numer telefonu|telefon komórkowy|"
                 "телефон|мобильный телефон|電話|電話番号|携帯電話|电话|移动电话|전화|휴대폰"},
    KnownColumns{CsvField::email, Use::unmarked,
                 "email|email address|e mail 1 value|primary email|mail|email 2 address|secondary email|"
                 "e mail adresse|primäre e mail adresse|sekundäre e mail adresse|adresse de messagerie|"
                 "adresse électronique|adresse e mail|courriel|première adresse électronique|"
                 "dirección de correo electrónico|correo electrónico|indirizzo posta elettronica|"
                 "indirizzo di posta elettronica|indirizzo e mail|endereço de email|endereço de e mail|"
                 "endereço de correio eletrónico|e mailadres|adres e mail|adres email|"
                 "адрес электронной почты|электронная "
                 "почта|メールアドレス|電子メールアドレス|电子邮件地址|电子邮件|邮箱|"
                 "전자메일주소|이메일|e post|e postadress|sähköposti"},
    KnownColumns{
        CsvField::categories, Use::unmarked,
        "categories|category|labels|group membership|groups|group|kategorien|kategorie|gruppen|"
        "gruppe|etiketten|catégories|catégorie|groupes|libellés|categorías|categoría|grupos|"
        "etiquetas|categorie|categoria|gruppi|etichette|categorias|marcadores|categorieën|groepen|"
        "kategorie kontaktów|kategoria|grupy|etykiety|категории|группы|カテゴリ|分类|类别|분류|범주"},
    KnownColumns{CsvField::mailbox, Use::unmarked, "mailbox|fax mailbox|mailfach"},
    KnownColumns{CsvField::type, Use::unmarked, "type"},
    KnownColumns{CsvField::members, Use::unmarked, "members"},
};

using Table = std::unordered_map<std::string, CsvColumn>;

Table makeTable()
{
    Table table;
    for (const auto& [field, use, names] : knownColumns) {
        std::string_view rest = names;
        while (!rest.empty()) {
            const auto end = std::min(rest.find('|'), rest.size());
            table.emplace(plainColumnName(rest.substr(0, end)), CsvColumn{field, use});
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    }
    return table;
}

} // namespace

std::string plainColumnName(std::string_view name)
{
    char* const composed =
        g_utf8_normalize(name.data(), static_cast<gssize>(name.size()), G_NORMALIZE_ALL_COMPOSE);
    if (composed == nullptr)
        return "";
    std::string plain;
    for (const char* at = composed; *at != '\0'; at = g_utf8_next_char(at)) {
        const auto character = g_unichar_tolower(g_utf8_get_char(at));
        if (g_unichar_isalnum(character) == FALSE && g_unichar_ismark(character) == FALSE)
            continue;
        std::array<char, 6> bytes{};
        plain.append(bytes.data(), static_cast<std::size_t>(g_unichar_to_utf8(character, bytes.data())));
    }
    g_free(composed);
    return plain;
}

CsvColumn columnByPlainName(const std::string& plain)
{
    static const Table table = makeTable();
    const auto found = table.find(plain);
    return found == table.end() ? CsvColumn{} : found->second;
}

} // namespace quelm
