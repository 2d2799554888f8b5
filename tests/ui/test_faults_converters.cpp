#include "convert/BatchConversion.h"
#include "convert/Chang_FIF.h"
#include "convert/FIF_Auto_Convert.h"
#include "convert/FIF_convert.h"
#include "convert/SaveButton.h"
#include "core/mod_of_grobal_var.h"
#include "mp3/cIDV3.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/TextBox.h"
#include "sample_files.h"
#include "selection/final_list.h"
#include "tagged_files.h"
#include "ui_convert.h"
#include "ui_explorer.h"
#include "ui_faults.h"

#include <QApplication>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

const QString folder = u"C:\\Music\\"_s;
const QString no_tag_written = u"Error! Can not Write ID3 Tag"_s;

QString taken(const QString& name)
{
    return name + u" already exists in MP3 File List"_s;
}

QStringList in_folder(const QStringList& names)
{
    QStringList paths;
    for (const QString& name : names)
        paths.append(name.contains(u'\\') ? name : folder + name);
    paths.sort();
    return paths;
}

/// Both panes over a folder with a file that nobody asks to change, and what the converters work with.
struct Music : ExplorerPanes
{
    Music() { write(u"stays.mp3"_s, "Stan", "Stays"); }

    void write(const QString& name, const QByteArray& artist, const QByteArray& title, unsigned char genre = 17) const
    {
        disk.write(folder + name, marked_file(name.toUtf8(), sample_tag(tag_of(artist, title, genre))));
    }
    /// Shows the folder, the last name first: a disk has an order of its own.
    void open()
    {
        tree.init_main_tree();
        click_folder(u"C:"_s);
        click_folder(u"C:\\Music"_s);
        list.ColumnClick(0);
    }
    void pick(const QStringList& picked)
    {
        for (const QString& name : picked) {
            tick(name);
            set_convert_mark(name, 1);
        }
    }
    void make_read_only(const QString& name) const { ::chmod(disk.native(folder + name).constData(), S_IRUSR); }

    /// Whether a path is one of those that a converted file may get.
    static bool may_be_called(const QString& path)
    {
        return path == folder + u"[Ann][Sea][Rock].mp3"_s || path == folder + u"(Ann)(Sea)(Rock).mp3"_s ||
               path == folder + u"[Ann][Sea].mp3"_s;
    }

    NotedTransport player;
    ImageList icons;
};

/// The boxes of the main window, filled by a person, with its save button.
struct Boxes
{
    explicit Boxes(Music& panes) : music(panes)
    {
        id3().init_FillComboGenre(cboGenre);
        txtArtist.set_Text(u"Ann"_s);
        txtTitle.set_Text(u"Sea"_s);
        id3().FillComboGenre_FIF(cboGenre, music.fields.genre);
    }

    Music& music;
    TextBox txtFilename;
    TextBox txtArtist;
    TextBox txtTitle;
    TextBox txtGenre;
    ComboBox cboGenre;
    SaveButton save{{.fields = {txtArtist, txtTitle, txtGenre, cboGenre},
                     .txtFilename = txtFilename,
                     .lvListView = music.list_view,
                     .transport = music.player,
                     .selected_tree_key = [this] { return music.tree.selected_key(); },
                     .click_row = [this](int row) { music.list.ItemClick(row); },
                     .refresh_all = [] {}}};
};

/// What a row of a table of scenes says: the files, and what comes of them where nothing goes wrong.
struct Scene
{
    std::function<void(Music&)> files;  ///< before the folder is shown
    std::function<void(Music&)> choice; ///< after that
    QStringList result;                 ///< names in the folder, or whole paths
    QStringList bystanders = {u"stays.mp3"_s};
    QStringList messages = {};
    QStringList told_messages = {};
};

void play(const QString& name)
{
    NotedTransport::load(folder + name, true);
}

void stand_stopped(const QString& name)
{
    NotedTransport::load(folder + name, false);
}

void press(const QWidget& form, const char* button)
{
    Q_EMIT form.findChild<UsrButton*>(QLatin1StringView(button))->Click();
}

void type_into_box(const QWidget& form, const char* box, const QString& text)
{
    form.findChild<TextBox*>(QLatin1StringView(box))->set_Text(text);
}

/// Rows of a scene in which the file a.mp3 is in the player, or read-only.
void add_states_of_the_file(const Scene& plain)
{
    const auto row = [&plain](const char* name, const std::function<void(Music&)>& make_so) {
        Scene scene = plain;
        scene.choice = [choice = plain.choice, make_so](Music& music) {
            choice(music);
            make_so(music);
        };
        QTest::newRow(name) << scene;
    };
    row("the file that plays", [](Music&) { play(u"a.mp3"_s); });
    row("the file in the player, stopped", [](Music&) { stand_stopped(u"a.mp3"_s); });
    row("a read-only file", [](Music& music) { music.make_read_only(u"a.mp3"_s); });
}

/// The scene where another file has the new name, so that a.mp3 keeps its own.
Scene with_target_taken(Scene scene, const QString& new_name)
{
    scene.files = [files = scene.files, new_name](Music& music) {
        files(music);
        music.write(new_name, "Another", "File");
    };
    scene.result = {new_name, u"a.mp3"_s, u"stays.mp3"_s};
    scene.bystanders = {new_name, u"stays.mp3"_s};
    return scene;
}

/// The scene where the final list holds the new name from another folder; a.mp3 is called `last_name` in the end.
Scene with_name_listed(Scene scene, const QString& new_name, const QString& last_name)
{
    const QString elsewhere = u"C:\\Other\\"_s + new_name;
    scene.files = [files = scene.files, elsewhere](Music& music) {
        files(music);
        music.disk.write(elsewhere, marked_file("elsewhere", sample_tag(tag_of("Ann", "Sea"))));
    };
    scene.choice = [choice = scene.choice, new_name](Music& music) {
        music.click_folder(u"C:\\Other"_s);
        music.pick({new_name});
        music.click_folder(u"C:\\Music"_s);
        choice(music);
    };
    scene.result = {last_name, elsewhere, u"stays.mp3"_s};
    scene.bystanders = {elsewhere, u"stays.mp3"_s};
    scene.messages = {taken(new_name)};
    return scene;
}

/// Scenes of one file, a.mp3, for which artist and title are typed.
void add_typed_scenes()
{
    QTest::addColumn<Scene>("scene");
    const QString new_name = u"[Ann][Sea][Rock].mp3"_s;
    const auto one_file = [](Music& music) { music.write(u"a.mp3"_s, "Old", "Older"); };
    const auto picked = [](Music& music) { music.pick({u"a.mp3"_s}); };
    const Scene plain = {.files = one_file, .choice = picked, .result = {new_name, u"stays.mp3"_s}};
    QTest::newRow("a file") << plain;
    add_states_of_the_file(plain);
    // The file keeps its name.
    QTest::newRow("a name that is listed already") << with_name_listed(plain, new_name, u"a.mp3"_s);

    Scene scene = plain;
    scene.files = [](Music& music) {
        music.disk.write(folder + u"a.mp3"_s, marked_file("a.mp3", QByteArray(128, '~')));
    };
    scene.result = {u"[Ann][Sea].mp3"_s, u"stays.mp3"_s};
    QTest::newRow("a file without a tag") << scene;

    scene = with_target_taken(plain, new_name);
    scene.messages = {new_name + u" already exists"_s};
    QTest::newRow("an existing target") << scene;
}

} // namespace

/// The calls on the disk are those of the button alone: what opens a form and chooses a file goes before.
class TestFaultsConverters : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void batch_conversion_data();
    void batch_conversion();
    void the_dialog_of_the_batch_conversion();
    void single_edit_data();
    void single_edit();
    void a_preview_touches_nothing();
    void auto_convert_data();
    void auto_convert();
    void save_button_data();
    void save_button();

private:
    void prepare(const Scene& scene);
    void open_single_edit();
    void open_auto_convert(const Scene& scene);
    /// The operation as far as all converters agree.
    FaultedOperation operation(const char* name, const Scene& scene);
    QStringList player_findings() const;

    std::unique_ptr<Music> music_;
    std::unique_ptr<QWidget> form_;
    std::unique_ptr<Boxes> boxes_;
    QString played_; ///< the file in the player before the operation
    bool was_playing_ = false;
};

void TestFaultsConverters::cleanup()
{
    form_.reset();
    boxes_.reset();
    music_.reset();
}

void TestFaultsConverters::prepare(const Scene& scene)
{
    cleanup();
    music_ = std::make_unique<Music>();
    scene.files(*music_);
    music_->open();
    scene.choice(*music_);
    played_ = shared.playing_mp3_path;
    was_playing_ = shared.is_playing == 1;
}

FaultedOperation TestFaultsConverters::operation(const char* name, const Scene& scene)
{
    return {.name = name,
            .prepare = [this, &scene] { prepare(scene); },
            .act = {},
            .result = in_folder(scene.result),
            .bystanders = in_folder(scene.bystanders),
            .messages = scene.messages,
            .told_messages = scene.told_messages + QStringList{no_tag_written},
            .more_findings = [this](const FaultedRun&) { return player_findings(); }};
}

/// The player gets its file back under the old name or the new one, and in the state that it was in.
QStringList TestFaultsConverters::player_findings() const
{
    QStringList findings;
    const QStringList calls = music_->player.take();
    const auto loads = calls.filter(u"play "_s).size() + calls.filter(u"PlayBtn "_s).size();
    if (calls.count(u"release"_s) != loads)
        findings.append(u"the player: "_s + calls.join(u", "_s));
    if ((shared.is_playing == 1) != was_playing_)
        findings.append(u"the player is in another state"_s);
    if (shared.playing_mp3_path != played_ && !music_->may_be_called(shared.playing_mp3_path))
        findings.append(u"in the player: "_s + shared.playing_mp3_path);
    return findings;
}

// The record takes the new name before the file is moved, and nobody looks at the result of the move: after a move that
// failed the record leads to a name that is not there, or that another file bears. A file whose tag can't be read takes
// the texts of the file before it.

void TestFaultsConverters::batch_conversion_data()
{
    QTest::addColumn<Scene>("scene");
    const QString new_name = u"[Ann][Sea][Rock].mp3"_s;
    const QString fif_name = u"[Old][Song][Pop].mp3"_s;
    const auto one_file = [](Music& music) { music.write(u"a.mp3"_s, "Ann", "Sea"); };

    const Scene plain = {.files = one_file,
                         .choice = [](Music& music) { music.pick({u"a.mp3"_s}); },
                         .result = {new_name, u"stays.mp3"_s}};
    add_states_of_the_file(plain);
    QTest::newRow("an existing target") << with_target_taken(plain, new_name);

    Scene scene = plain;
    scene.files = [=](Music& music) {
        one_file(music);
        music.write(fif_name, "X", "Y", 3);
        music.write(u"b.mp3"_s, "Bob", "Sky");
    };
    scene.choice = [=](Music& music) { music.pick({u"a.mp3"_s, fif_name, u"b.mp3"_s}); };
    scene.result = {new_name, u"[Bob][Sky][Rock].mp3"_s, fif_name, u"stays.mp3"_s};
    scene.told_messages = {taken(new_name)};
    QTest::newRow("two files, and the tag of a FIF name") << scene;

    scene = plain;
    scene.files = [=](Music& music) {
        one_file(music);
        music.write(u"b.mp3"_s, "Ann", "Sea");
    };
    scene.choice = [](Music& music) { music.pick({u"a.mp3"_s, u"b.mp3"_s}); };
    scene.result = {new_name, u"b.mp3"_s, u"stays.mp3"_s};
    scene.messages = {taken(new_name)};
    QTest::newRow("two files of one new name") << scene;

    scene = plain;
    scene.files = [=](Music& music) {
        music.write(fif_name, "X", "Y", 3);
        music.make_read_only(fif_name);
    };
    scene.choice = [=](Music& music) { music.pick({fif_name}); };
    scene.result = {fif_name, u"stays.mp3"_s};
    QTest::newRow("a read-only file with a FIF name") << scene;
}

void TestFaultsConverters::batch_conversion()
{
    QFETCH(Scene, scene);
    FaultedOperation batch = operation("batch conversion", scene);
    batch.act = [this] { BatchConversion(music_->player).Change_FIF([] {}); };
    batch.record_may_lead = true;
    prove_against_faults(batch);
}

// The lists of the dialog are filled anew at the end, which drops what is not where its record leads. Then the folder
// is read again; what can't be read is told, and the folder above it takes over.

void TestFaultsConverters::the_dialog_of_the_batch_conversion()
{
    const Scene scene = {.files =
                             [](Music& music) {
                                 music.write(u"a.mp3"_s, "Ann", "Sea");
                                 music.write(u"[Old][Song][Pop].mp3"_s, "X", "Y", 3);
                             },
                         .choice =
                             [](Music& music) {
                                 music.pick({u"a.mp3"_s, u"[Old][Song][Pop].mp3"_s});
                             },
                         .result = {u"[Ann][Sea][Rock].mp3"_s, u"[Old][Song][Pop].mp3"_s, u"stays.mp3"_s},
                         .told_messages = {u"Device Error : C:\\Music\\"_s, u"Device Error : C:\\"_s,
                                           u"Device Error : C:\\Music"_s, u"Device Error : C:"_s}};
    FaultedOperation batch = operation("batch conversion in its dialog", scene);
    batch.prepare = [&] {
        prepare(scene);
        form_ = std::make_unique<FIF_convert>(
            music_->player,
            FIF_convert::Surroundings{.refresh_all = [this] { music_->tree.refresh_all(); },
                                      .small_icons = music_->icons},
            nullptr);
    };
    batch.act = [this] { press(*form_, "Change_FIF"); };
    batch.record_may_lead = true;
    batch.record_may_go = true;
    prove_against_faults(batch);
}

// As with the batch conversion the record goes before the file.

void TestFaultsConverters::open_single_edit()
{
    shared.edit_file_name = u"a.mp3"_s;
    form_ = std::make_unique<Chang_FIF>(music_->player,
                                        Chang_FIF::Surroundings{.refresh_all = [] {}, .Fill_list = [] {}}, nullptr);
    type_into_box(*form_, "txtArtist", u"Ann"_s);
    type_into_box(*form_, "txtTitle", u"Sea"_s);
}

void TestFaultsConverters::single_edit_data()
{
    add_typed_scenes();
}

void TestFaultsConverters::single_edit()
{
    QFETCH(Scene, scene);
    FaultedOperation edit = operation("single edit", scene);
    edit.prepare = [&] {
        prepare(scene);
        open_single_edit();
    };
    edit.act = [this] { press(*form_, "cmdSave"); };
    edit.record_may_lead = true;
    prove_against_faults(edit);
}

/// Opens the dialog for all files but those that nobody asks to change.
void TestFaultsConverters::open_auto_convert(const Scene& scene)
{
    ListView& list = music_->list_view;
    for (int index = 1; index <= list.Count(); ++index)
        list.set_Selected(index, !scene.bystanders.contains(list.Item(index).Text));
    form_ = std::make_unique<FIF_Auto_Convert>(music_->player,
                                               FIF_Auto_Convert::Surroundings{.lvListView = music_->list_view,
                                                                              .small_icons = music_->icons,
                                                                              .refresh_all = [] {}},
                                               nullptr);
}

void TestFaultsConverters::a_preview_touches_nothing()
{
    const Scene scene = {.files =
                             [](Music& music) {
                                 shared.fif_type = 3;
                                 music.write(u"[Old][Song][Pop].mp3"_s, "X", "Y", 3);
                                 music.write(u"a.mp3"_s, "Ann", "Sea");
                             },
                         .choice = [](Music& music) { music.pick({u"a.mp3"_s}); },
                         .result = {u"[Old][Song][Pop].mp3"_s, u"a.mp3"_s, u"stays.mp3"_s}};
    FaultedOperation preview = operation("preview of auto convert", scene);
    preview.prepare = [&] {
        prepare(scene);
        open_auto_convert(scene);
    };
    preview.act = [this] { press(*form_, "freeview"); };
    preview.bystanders = preview.result;
    preview.told_messages = {};
    prove_against_faults(preview);
}

// The final list comes after the move, whose result nobody looks at: after a move that failed the record leads to a
// name that is not there, and where the list refuses the name, the file has gone on to it and its record stays behind.

void TestFaultsConverters::auto_convert_data()
{
    QTest::addColumn<Scene>("scene");
    const QString new_name = u"(Ann)(Sea)(Rock).mp3"_s;
    const auto one_file = [](Music& music) {
        shared.fif_type = 3;
        music.write(u"a.mp3"_s, "Ann", "Sea");
    };
    const auto picked = [](Music& music) { music.pick({u"a.mp3"_s}); };
    const Scene plain = {.files = one_file, .choice = picked, .result = {new_name, u"stays.mp3"_s}};
    add_states_of_the_file(plain);
    QTest::newRow("an existing target") << with_target_taken(plain, new_name);
    // The file gets the name all the same.
    QTest::newRow("a name that is listed already") << with_name_listed(plain, new_name, new_name);

    Scene scene = plain;
    scene.files = [=](Music& music) {
        one_file(music);
        music.write(u"[Old][Song][Pop].mp3"_s, "X", "Y", 3);
        music.disk.write(folder + u"noise.mp3"_s, marked_file("noise", QByteArray(128, '~')));
    };
    scene.result = {new_name, u"(Old)(Song)(Pop).mp3"_s, u"noise.mp3"_s, u"stays.mp3"_s};
    scene.bystanders = {u"noise.mp3"_s, u"stays.mp3"_s};
    QTest::newRow("a file with a tag, one of another shape, and one with neither") << scene;

    scene = plain;
    scene.files = [=](Music& music) {
        one_file(music);
        music.write(u"b.mp3"_s, "Ann", "Sea");
    };
    scene.choice = [](Music& music) { music.pick({u"a.mp3"_s, u"b.mp3"_s}); };
    scene.result = {new_name, u"a.mp3"_s, u"stays.mp3"_s};
    scene.told_messages = {taken(new_name)};
    QTest::newRow("two files of one new name") << scene;
}

void TestFaultsConverters::auto_convert()
{
    QFETCH(Scene, scene);
    FaultedOperation conversion = operation("auto convert", scene);
    conversion.prepare = [&] {
        prepare(scene);
        open_auto_convert(scene);
        press(*form_, "freeview");
    };
    conversion.act = [this] { press(*form_, "autoconvert"); };
    conversion.record_may_lead = true;
    conversion.record_may_lag = true;
    prove_against_faults(conversion);
}

// Final list, file, tag, row, in this order: a move that failed leaves row and record on the new name.

void TestFaultsConverters::save_button_data()
{
    add_typed_scenes();
    QTest::newRow("a file that is not picked")
        << Scene{.files = [](Music& music) { music.write(u"a.mp3"_s, "Old", "Older"); },
                 .choice = [](Music&) {},
                 .result = {u"[Ann][Sea][Rock].mp3"_s, u"stays.mp3"_s}};
}

void TestFaultsConverters::save_button()
{
    QFETCH(Scene, scene);
    FaultedOperation save = operation("save button", scene);
    save.prepare = [&] {
        prepare(scene);
        music_->list.ItemClick(music_->row_of(u"a.mp3"_s));
        boxes_ = std::make_unique<Boxes>(*music_);
    };
    save.act = [this] { boxes_->save.cmdSave_Click(); };
    save.record_may_lead = true;
    prove_against_faults(save);
}

QUILMO_FAULTS_TEST(TestFaultsConverters)
#include "test_faults_converters.moc"
